// Taking up conversations of the past, and throwing them away.
#pragma once

#include "core/AuditEvent.h"
#include "sessions/ClaudeSessionHistory.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <functional>
#include <optional>

namespace Vesk
{

class AgentSessionStore;
class ProjectCatalog;
class ProjectChat;
struct PastConversation;

enum class ResumeDeleteOutcome {
    Deleted,
    Blocked, ///< a session is open on it: its file would be pulled from under the agent
    Failed,
};

/** A conversation as an earlier run left it: whether it is still there has not been looked at. */
struct RememberedConversation {
    QString id;
    QString alias; ///< the project
    QString title; ///< may be empty

    bool operator==(const RememberedConversation &) const = default;
};

/** The one place where a conversation becomes an open session again. Main thread; files are read on the pool.
 */
class SessionResume : public QObject
{
    Q_OBJECT

public:
    using Log = std::function<void(const AuditEvent &event)>;
    using Done = std::function<void(ProjectChat *chat)>;

    SessionResume(AgentSessionStore &store, const ProjectCatalog &catalog, Log log,
                  QObject *parent = nullptr);

    /** The folder of all transcripts. */
    [[nodiscard]] static QString historyRoot();

    /** Opens the conversation, or finds the session that is open on it, and calls `done` with it: with null
       when its project is gone. `done` is not called once `context` is. */
    void resumeSession(const ResumableSession &session, QObject *context, Done done);

    /** Calls `found` with those that are still there, in this order; the log is told of the others. `found`
       is not called once `context` is gone. */
    void find(const QList<RememberedConversation> &conversations, QObject *context,
              std::function<void(const QList<ResumableSession> &)> found);
    /** Opens a session on a conversation and leaves its transcript unread; null when a session is open on it
       or its project is gone. */
    ProjectChat *openUnread(const ResumableSession &session);
    /** Fills a session that openUnread() made; any other has all it can have. */
    void read(ProjectChat *chat);

    /** Moves the transcript to the Trash. */
    [[nodiscard]] ResumeDeleteOutcome deleteResumableSession(const ResumableSession &session);
    /** The conversation that was thrown away last and can be brought back. */
    [[nodiscard]] const std::optional<ResumableSession> &lastDeleted() const { return m_lastDeleted; }
    /** Brings that one back. When it cannot be, it is not offered again, but where a file stands in its way.
     */
    [[nodiscard]] ClaudeSessionHistory::TrashReturn undoDelete();

private:
    struct Waiter {
        QPointer<QObject> context;
        Done done;
    };

    [[nodiscard]] ProjectChat *open(const ResumableSession &session, const PastConversation &past);
    void logResumed(const ProjectChat &chat, const ResumableSession &session, const PastConversation &past);
    void refreshUntitledResumeTitle(ProjectChat *chat, const ResumableSession &session);

    AgentSessionStore &m_store;
    const ProjectCatalog &m_catalog;
    Log m_log;
    QHash<QString, QList<Waiter>>
        m_loading; // by conversation id: one is read once, however often it is asked for
    QHash<QUuid, ResumableSession> m_unread; // by session
    std::optional<ResumableSession> m_lastDeleted;
    ClaudeSessionHistory::TrashedFile m_trashed; // its file
};

} // namespace Vesk
