#include "ui/issues/IssueSessions.h"

#include "app/Runtime.h"
#include "sessions/ProjectChat.h"
#include "ui/chat/ChatWords.h"
#include "ui/controls/SessionMarks.h"

namespace Vesk
{

namespace
{

int markOf(const ProjectChat &chat)
{
    const auto kind = chat.pendingPermission() ? SessionMarks::Kind::WaitApproval
        : chat.pendingQuestion()               ? SessionMarks::Kind::WaitAnswer
        : chat.isRunning()                     ? SessionMarks::Kind::Running
        : chat.hasRunningBackgroundTask()      ? SessionMarks::Kind::Background
                                               : SessionMarks::Kind::Idle;
    return static_cast<int>(kind);
}

} // namespace

void IssueSessions::setView(IssuesView *view)
{
    m_view = view;
    if (m_view) {
        connect(&m_view->runtime().issues(), &IssueCrossings::sessionsChanged, this, &IssueSessions::refresh);
    }
    refresh();
    Q_EMIT viewChanged();
}

void IssueSessions::setPath(const QString &path)
{
    m_path = path;
    refresh();
    Q_EMIT pathChanged();
}

void IssueSessions::show(int row)
{
    if (row < 0 || row >= m_chats.size() || !m_chats[row]) {
        return;
    }
    auto &crossings = m_view->runtime().issues();
    Q_EMIT crossings.sessionChosen(m_chats[row]);
    if (crossings.openSessionWindow) {
        crossings.openSessionWindow();
    }
}

void IssueSessions::refresh()
{
    for (const auto &chat : m_chats) {
        if (chat) {
            chat->disconnect(this);
        }
    }
    setKeys({});
    m_chats.clear();
    QStringList keys;
    const auto open =
        m_view && !m_path.isEmpty() ? m_view->runtime().issues().sessionsOn(m_path) : QList<ProjectChat *>();
    for (auto *chat : open) {
        m_chats.append(chat);
        keys.append(chat->id().toString());
        const auto note = [this, key = keys.last()] { noteChanged(key); };
        connect(chat, &ProjectChat::titleChanged, this, note);
        connect(chat, &ProjectChat::isRunningChanged, this, note);
        connect(chat, &ProjectChat::runStartedAtChanged, this, note);
        connect(chat, &ProjectChat::pendingPromptChanged, this, note);
    }
    setKeys(keys);
}

QVariant IssueSessions::data(const QModelIndex &index, int role) const
{
    const ProjectChat *chat = holds(index) ? m_chats.value(index.row()) : nullptr;
    if (!chat) {
        return {};
    }
    if (role == Qt::DisplayRole || role == TitleRole) {
        return chat->title();
    }
    const bool waits = chat->promptSince().isValid();
    switch (role) {
    case MarkRole:
        return markOf(*chat);
    case WaitsRole:
        return waits;
    case SinceRole:
        return waits ? chat->promptSince() : chat->isRunning() ? chat->runStartedAt() : QDateTime();
    case LiveRole:
        return waits || chat->isRunning();
    case MomentRole: {
        const auto &rows = chat->messages().rows();
        return rows.isEmpty() ? QString() : ChatWords::rowTime(rows.last().at, QDateTime::currentDateTime());
    }
    default:
        return {};
    }
}

QHash<int, QByteArray> IssueSessions::roleNames() const
{
    return {{TitleRole, "title"}, {MarkRole, "mark"}, {WaitsRole, "waits"},
            {SinceRole, "since"}, {LiveRole, "live"}, {MomentRole, "moment"}};
}

} // namespace Vesk
