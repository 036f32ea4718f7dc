#include "git/GitWorkingTree.h"

#include "git/GitFields_p.h"
#include "git/GitPath.h"

#include <QSet>

namespace Vesk::GitWorkingTree
{
namespace
{

const QSet<QString> &conflictCodes()
{
    static const QSet<QString> codes {QStringLiteral("DD"), QStringLiteral("AU"), QStringLiteral("UD"),
                                      QStringLiteral("UA"), QStringLiteral("DU"), QStringLiteral("AA"),
                                      QStringLiteral("UU")};
    return codes;
}

bool isChanged(QChar letter)
{
    return letter != u' ' && letter != u'?' && letter != u'!';
}

qsizetype nameStart(QStringView path)
{
    const qsizetype end = path.endsWith(u'/') ? path.size() - 1 : path.size();
    return path.first(end).lastIndexOf(u'/') + 1;
}

} // namespace

Change::Kind Change::kind() const
{
    const auto either = [this](QChar letter) { return index == letter || worktree == letter; };
    if (conflictCodes().contains(QString(index) + worktree))
        return Kind::Conflicted;
    if (index == u'?')
        return Kind::Untracked;
    if (either(u'R'))
        return Kind::Renamed;
    if (either(u'C'))
        return Kind::Copied;
    if (index == u'A')
        return Kind::Added;
    if (either(u'D'))
        return Kind::Deleted;
    if (either(u'T'))
        return Kind::TypeChanged;
    if (either(u'M'))
        return Kind::Modified;
    return Kind::Other;
}

QString Change::badge() const
{
    switch (kind()) {
    case Kind::Modified:
        return QStringLiteral("M");
    case Kind::Added:
        return QStringLiteral("A");
    case Kind::Deleted:
        return QStringLiteral("D");
    case Kind::Renamed:
        return QStringLiteral("R");
    case Kind::Copied:
        return QStringLiteral("C");
    case Kind::TypeChanged:
        return QStringLiteral("T");
    case Kind::Untracked:
        return QStringLiteral("?");
    case Kind::Conflicted:
        return QStringLiteral("U");
    case Kind::Other:
        break;
    }
    return index == u' ' ? worktree : index;
}

QString Change::kindLabel() const
{
    switch (kind()) {
    case Kind::Modified:
        return QStringLiteral("수정됨");
    case Kind::Added:
        return QStringLiteral("새로 추가됨");
    case Kind::Deleted:
        return QStringLiteral("삭제됨");
    case Kind::Renamed:
        return QStringLiteral("이름 바뀜");
    case Kind::Copied:
        return QStringLiteral("복사됨");
    case Kind::TypeChanged:
        return QStringLiteral("종류 바뀜(파일↔링크)");
    case Kind::Untracked:
        return isFolder() ? QStringLiteral("추적 안 하는 새 폴더") : QStringLiteral("추적 안 하는 새 파일");
    case Kind::Conflicted:
        return QStringLiteral("충돌");
    case Kind::Other:
        break;
    }
    return QStringLiteral("상태 ") + index + worktree;
}

QString Change::stageSummary() const
{
    const Kind is = kind();
    if (is == Kind::Untracked)
        return QStringLiteral("untracked");
    if (is == Kind::Conflicted)
        return QStringLiteral("병합 충돌");
    if (isChanged(index))
        return isChanged(worktree) ? QStringLiteral("staged + unstaged") : QStringLiteral("staged");
    return isChanged(worktree) ? QStringLiteral("unstaged") : QString();
}

QString Change::fileName() const
{
    const QString name = path.mid(nameStart(path));
    return GitPath::shown(name.endsWith(u'/') ? name.chopped(1) : name);
}

QString Change::directory() const
{
    const qsizetype start = nameStart(path);
    return start == 0 ? QString() : GitPath::shown(path.left(start - 1));
}

QList<Change> parseStatus(QByteArrayView text)
{
    QList<Change> changes;
    GitFields fields(text, '\0');
    while (const auto record = fields.next()) {
        if (record->size() < 4 || (*record)[2] != ' ')
            continue;
        Change change {.path = GitPath::decode(record->sliced(3)),
                       .index = QChar::fromLatin1((*record)[0]),
                       .worktree = QChar::fromLatin1((*record)[1])};
        const auto isMoved = [](QChar letter) { return letter == u'R' || letter == u'C'; };
        if (isMoved(change.index) || isMoved(change.worktree)) {
            if (const auto original = fields.next(); original && !original->isEmpty())
                change.originalPath = GitPath::decode(*original);
        }
        changes.append(std::move(change));
    }
    return changes;
}

} // namespace Vesk::GitWorkingTree
