#include "ui/chat/NoticeList.h"

#include "sessions/ProjectChat.h"

#include <algorithm>

namespace Vesk
{

namespace
{

// The mode to name as an example of one that allows more than this one.
AgentPermissionMode widerMode(AgentPermissionMode mode)
{
    return mode == AgentPermissionMode::AcceptEdits || mode == AgentPermissionMode::Auto
        ? AgentPermissionMode::Full
        : AgentPermissionMode::AcceptEdits;
}

} // namespace

NoticeList::NoticeList(QObject *parent)
    : QAbstractListModel(parent)
{
}

void NoticeList::setChat(ProjectChat *chat)
{
    if (m_chat) {
        disconnect(m_chat, nullptr, this, nullptr);
    }
    m_chat = chat;
    m_expanded.clear();
    if (m_chat) {
        connect(m_chat, &ProjectChat::permissionModeChanged, this, &NoticeList::update);
        connect(m_chat, &ProjectChat::outcomeChanged, this, &NoticeList::update);
        connect(m_chat, &ProjectChat::isRunningChanged, this, &NoticeList::update);
    }
    update();
}

void NoticeList::toggle(int index)
{
    if (index < 0 || index >= rowCount()) {
        return;
    }
    const auto kind = m_notices.at(index).kind;
    if (!m_expanded.remove(kind)) {
        m_expanded.insert(kind);
    }
    const auto changed = this->index(index);
    Q_EMIT dataChanged(changed, changed, {ExpandedRole});
}

int NoticeList::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_notices.size());
}

QVariant NoticeList::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto &notice = m_notices.at(index.row());
    switch (role) {
    case KindRole:
        return QVariant::fromValue(notice.kind);
    case Qt::DisplayRole:
    case TextRole:
        return notice.text;
    case DetailRole:
        return notice.detail;
    case ExpandedRole:
        return m_expanded.contains(notice.kind);
    case OpensAuditLogRole:
        return notice.kind == Kind::StreamSummary;
    default:
        return {};
    }
}

QHash<int, QByteArray> NoticeList::roleNames() const
{
    return {{KindRole, "kind"},
            {TextRole, "text"},
            {DetailRole, "detail"},
            {ExpandedRole, "expanded"},
            {OpensAuditLogRole, "opensAuditLog"}};
}

QList<NoticeList::Notice> NoticeList::current() const
{
    QList<Notice> notices;
    if (!m_chat) {
        return notices;
    }
    if (const auto stale = m_chat->stalePermissionMode()) {
        const auto mode = label(*stale);
        notices.append(
            {Kind::PermissionDrift, QStringLiteral("권한 변경이 지금 세션엔 적용되지 않습니다 · ") + mode,
             QStringLiteral("권한 변경이 지금 세션에 적용되지 않습니다. 이 세션은 %1로 실행 중입니다. "
                            "권한 모드는 세션 프로세스를 띄울 때 정해집니다. 지금은 배경 작업이 아직 돌고 "
                            "있어 같은 프로세스로 이어서 대화하는 중이라, 바꾼 모드는 새 프로세스부터 "
                            "적용됩니다.")
                 .arg(mode)});
    }
    if (!m_chat->lastDeniedTools().isEmpty()) {
        notices.append(
            {Kind::ToolDenial,
             QStringLiteral("도구 권한 거부 %1. 탭하면 원인 설명.").arg(m_chat->deniedToolTally()),
             QStringLiteral("에이전트가 쓰려 했지만 이번 실행의 권한 모드·샌드박스가 막은 도구예요. "
                            "실행/변형 도구가 필요하면 컴포저에서 권한 모드를 올리세요(예: %1). "
                            "보호 경로·명령 안전 검증에 걸린 경우도 포함됩니다.")
                 .arg(label(widerMode(m_chat->permissionMode())))});
    }
    const auto &observation = m_chat->streamObservation();
    if (const auto summary = observation.summaryLine()) {
        notices.append({Kind::StreamSummary, *summary, observation.detailText()});
    }
    return notices;
}

// Notices of one kind keep their row while their words change, so an opened one stays open and in its place.
void NoticeList::update()
{
    const auto fresh = current();
    const auto hasKind = [](const QList<Notice> &list, Kind kind) {
        return std::any_of(list.begin(), list.end(), [kind](const auto &each) { return each.kind == kind; });
    };
    for (int i = rowCount() - 1; i >= 0; --i) {
        if (const auto kind = m_notices.at(i).kind; !hasKind(fresh, kind)) {
            beginRemoveRows({}, i, i);
            m_notices.removeAt(i);
            m_expanded.remove(kind);
            endRemoveRows();
        }
    }
    for (int i = 0; i < fresh.size(); ++i) {
        if (i >= m_notices.size() || m_notices.at(i).kind != fresh.at(i).kind) {
            beginInsertRows({}, i, i);
            m_notices.insert(i, fresh.at(i));
            endInsertRows();
        } else if (m_notices.at(i) != fresh.at(i)) {
            m_notices[i] = fresh.at(i);
            const auto changed = index(i);
            Q_EMIT dataChanged(changed, changed);
        }
    }
}

} // namespace Vesk
