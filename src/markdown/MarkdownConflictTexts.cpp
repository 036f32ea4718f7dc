#include "markdown/MarkdownConflictTexts.h"

namespace Vesk::MarkdownConflictTexts
{

QString label(MaybeConflict conflict)
{
    if (!conflict)
        return {};
    switch (*conflict) {
    case DocumentConflict::ExternalChange:
        return QStringLiteral("외부에서 변경됨");
    case DocumentConflict::Unreadable:
        return QStringLiteral("읽지 못함 — 저장 잠김");
    case DocumentConflict::Missing:
        return QStringLiteral("파일 없음 — 저장하면 다시 만듭니다");
    }
    Q_UNREACHABLE();
}

QString badge(MaybeConflict conflict, const QString &externalActor)
{
    if (!conflict)
        return {};
    switch (*conflict) {
    case DocumentConflict::ExternalChange:
        return QStringLiteral("다른 곳(예: ") + externalActor
            + QStringLiteral(")이 이 파일을 수정했습니다. \"저장\"은 내 편집으로 덮어쓰고, \"다시 읽기\"는 "
                             "외부 내용을 가져옵니다.");
    case DocumentConflict::Unreadable:
        return QStringLiteral("이 파일을 읽지 못했습니다(비UTF8이거나 권한 문제). 지금 보이는 내용이 파일의 "
                              "현재 내용이라는 보장이 없어 저장을 잠갔습니다 — 그대로 쓰면 원본이 "
                              "날아갑니다. 원인을 고친 뒤 \"다시 읽기\"로 재시도하세요.");
    case DocumentConflict::Missing:
        return QStringLiteral("이 파일이 사라졌습니다(외부에서 삭제·이동). 편집 내용은 아직 앱 안에만 "
                              "있습니다 — \"저장\"을 누르면 이 경로에 다시 만듭니다. 읽어올 내용이 없어 "
                              "\"다시 읽기\"는 잠깁니다.");
    }
    Q_UNREACHABLE();
}

QString saveFailedLabel()
{
    return QStringLiteral("저장하지 못함");
}

QString saveFailedBadge(const QString &reason)
{
    return reason
        + QStringLiteral(" · 편집 내용은 아직 앱 안에만 있습니다. 원인을 고친 뒤 \"저장\"을 누르세요. 다음 "
                         "편집 때에도 다시 저장해 봅니다. \"다시 읽기\"는 편집을 버립니다.");
}

bool canSave(MaybeConflict conflict, bool dirty)
{
    return conflict ? *conflict != DocumentConflict::Unreadable : dirty;
}

QString saveHelp(MaybeConflict conflict, bool dirty)
{
    if (!conflict)
        return dirty ? QStringLiteral("지금 저장 (자동 저장을 기다리지 않음)")
                     : QStringLiteral("저장할 변경이 없습니다");
    switch (*conflict) {
    case DocumentConflict::ExternalChange:
        return QStringLiteral("내 편집으로 덮어쓰기 (외부 변경 내용은 사라집니다)");
    case DocumentConflict::Unreadable:
        return QStringLiteral("읽지 못한 파일이라 저장을 잠갔습니다 — 지금 저장하면 원본이 날아갑니다");
    case DocumentConflict::Missing:
        return QStringLiteral("사라진 경로에 파일을 다시 만들어 저장합니다");
    }
    Q_UNREACHABLE();
}

bool canReload(MaybeConflict conflict)
{
    return conflict && *conflict != DocumentConflict::Missing;
}

QString reloadHelp(MaybeConflict conflict)
{
    if (!conflict)
        return QStringLiteral("파일에 있는 내용으로 되돌립니다 (내 편집은 버려짐)");
    switch (*conflict) {
    case DocumentConflict::ExternalChange:
        return QStringLiteral("외부 변경 내용으로 교체 (내 편집은 버려짐)");
    case DocumentConflict::Unreadable:
        return QStringLiteral("재시도 — 이제 읽히면 그 내용으로 교체합니다(내 편집은 버려짐). 여전히 못 "
                              "읽으면 지금 내용을 그대로 둡니다.");
    case DocumentConflict::Missing:
        return QStringLiteral("파일이 없어 읽어올 내용이 없습니다 — 편집을 남기려면 \"저장\"을 누르세요");
    }
    Q_UNREACHABLE();
}

QString lockedNotice(MaybeConflict conflict, bool everReadFromDisk, bool dirty)
{
    if (conflict != DocumentConflict::Unreadable)
        return {};
    const QString cannotRead = QStringLiteral("이 파일을 읽지 못했습니다(비UTF8이거나 권한 문제).");
    const QString whatToDo =
        QStringLiteral("원인을 고친 뒤 위의 \"다시 읽기\"로 재시도하세요. 남겨야 할 글은 "
                       "아래에서 선택해 복사할 수 있습니다.");
    if (!everReadFromDisk)
        return cannotRead
            + QStringLiteral(" 한 번도 읽지 못해 아래는 파일에서 온 내용이 아닙니다 — 원본이 빈 내용으로 "
                             "덮어써지지 않게 편집과 저장을 잠갔습니다. ")
            + whatToDo;
    return cannotRead + QStringLiteral(" 아래는 마지막으로 읽은 내용이고 ")
        + (dirty ? QStringLiteral("여기에 미저장 편집이 얹혀 있습니다")
                 : QStringLiteral("그 뒤 파일이 어떻게 바뀌었는지는 알 수 없습니다"))
        + QStringLiteral(" — 지금 저장하면 그 사이의 변경을 덮어쓰게 되므로 편집과 저장을 잠갔습니다. ")
        + whatToDo;
}

} // namespace Vesk::MarkdownConflictTexts
