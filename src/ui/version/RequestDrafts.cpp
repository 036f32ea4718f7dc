#include "ui/version/RequestDrafts.h"

#include "git/GitPath.h"

#include <QStringList>

#include <algorithm>

namespace Vesk::RequestDrafts
{

namespace
{

using GitStatusReader::RepoStatus;
using GitWorkingTree::Change;

constexpr qsizetype mostNames = 20;

bool isConflicted(const Change &change)
{
    return change.kind() == Change::Kind::Conflicted;
}

bool hasConflicts(const RepoStatus &status)
{
    return std::ranges::any_of(status.changes, isConflicted);
}

QString listOf(const QStringList &names)
{
    QString text;
    for (const QString &name : names.mid(0, mostNames))
        text += QStringLiteral("\n- ") + name;
    if (names.size() > mostNames)
        text += QStringLiteral("\n- 외 %1개").arg(names.size() - mostNames);
    return text;
}

QString conflictDraft(const RepoStatus &status)
{
    QStringList names;
    for (const Change &change : status.changes) {
        if (isConflicted(change))
            names.append(GitPath::shown(change.path));
    }
    return QStringLiteral("병합 충돌 %1개를 풀어 줘. 양쪽의 뜻을 살리고, 판단이 서지 않는 곳은 물어봐 줘.")
               .arg(names.size())
        + listOf(names);
}

} // namespace

QString draft(Kind kind, const RepoStatus &status)
{
    switch (kind) {
    case Kind::Commit:
        return QStringLiteral(
                   "커밋 안 한 변경 %1개를 살펴보고, 뜻이 다른 것은 나누어 알맞은 메시지로 커밋해 줘.")
            .arg(status.changes.size());
    case Kind::Push:
        return (status.hasRemote
                    ? QStringLiteral("%1 브랜치의 커밋 %2개를 원격에 푸시해 줘.")
                          .arg(status.branch, QString::number(status.ahead))
                    : QStringLiteral("%1 브랜치를 원격에 올리고 추적하게 해 줘.").arg(status.branch))
            + QStringLiteral(" 강제 푸시는 하지 마.");
    case Kind::Resolve:
        return conflictDraft(status);
    case Kind::Pull:
        return QStringLiteral("%1 브랜치에 원격의 커밋 %2개를 받아 합쳐 줘. 충돌이 나면 멈추고 알려 줘.")
            .arg(status.branch, QString::number(status.behind));
    case Kind::Branch:
        return QStringLiteral("지금 자리에서 새 브랜치를 만들고 그리로 옮겨 줘.\n이름: ");
    case Kind::Stash:
        return QStringLiteral("커밋 안 한 변경 %1개를 추적 안 하는 파일까지 스태시에 넣어 줘.")
            .arg(status.changes.size());
    case Kind::Any:
        return {};
    case Kind::Merge:
        break;
    }
    return QStringLiteral("다음 브랜치를 지금 브랜치에 병합해 줘. 충돌이 나면 멈추고 알려 줘.")
        + listOf(status.branches);
}

QString reason(Kind kind, const RepoStatus &status)
{
    const bool isDetached = status.branch.isEmpty();
    switch (kind) {
    case Kind::Commit:
        if (hasConflicts(status))
            return QStringLiteral("충돌을 먼저 풀어야 합니다");
        [[fallthrough]];
    case Kind::Stash:
        return !status.changesFailure.isEmpty() ? QStringLiteral("커밋 안 한 변경을 읽지 못했습니다")
            : status.changes.isEmpty()          ? QStringLiteral("커밋 안 한 변경이 없습니다")
                                                : QString();
    case Kind::Push:
        return !status.hasAnyRemote ? QStringLiteral("원격이 없습니다")
            : isDetached            ? QStringLiteral("지금 브랜치 위에 있지 않습니다")
            : status.hasRemote && status.ahead == 0 ? QStringLiteral("보낼 커밋이 없습니다")
                                                    : QString();
    case Kind::Resolve:
        return hasConflicts(status) ? QString() : QStringLiteral("충돌이 없습니다");
    case Kind::Pull:
        return status.behind == 0 ? QStringLiteral("받을 커밋이 없습니다") : QString();
    case Kind::Merge:
        return status.branches.isEmpty() ? QStringLiteral("다른 브랜치가 없습니다") : QString();
    case Kind::Any:
        return {};
    case Kind::Branch:
        break;
    }
    return status.rows.isEmpty() ? QStringLiteral("아직 커밋이 없습니다") : QString();
}

} // namespace Vesk::RequestDrafts
