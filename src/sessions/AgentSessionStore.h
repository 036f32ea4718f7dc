// The registry of open sessions.
#pragma once

#include "claude/ClaudeSettings.h"
#include "core/ProjectCatalog.h"
#include "sessions/PastConversation.h"
#include "sessions/ProjectChat.h"

#include <QHash>
#include <QList>
#include <QObject>

#include <functional>
#include <optional>

namespace Vesk
{

/** Owns the open sessions. What every session needs from the program around it is given once, at the start.
 */
class AgentSessionStore : public QObject
{
    Q_OBJECT

public:
    explicit AgentSessionStore(SessionServices services, QObject *parent = nullptr);

    std::function<QHash<QString, QString>()>
        resolveEnv; ///< what a new session adds to its children's environment
    std::function<void(const QString &line)> streamNoteSink; ///< a session's lines for the audit log
    /** ProjectChat::onFileLink of every session. */
    std::function<bool(const ProjectChat &chat, const QString &path, const QString &realPath)> fileLinkSink;

    /** In opening order. */
    [[nodiscard]] const QList<ProjectChat *> &sessions() const { return m_sessions; }
    [[nodiscard]] QList<ProjectChat *> sessions(const QString &alias) const;
    /** Null when there is no open session of this id. */
    [[nodiscard]] ProjectChat *session(const QUuid &id) const;

    /** Opens a session on a project. Without `defaults` the agent's own settings files say how it starts, the
        project's local ones included if `includeLocalSettings`. */
    ProjectChat *newSession(const ProjectCatalogEntry &entry, bool includeLocalSettings = true,
                            const std::optional<ClaudeProjectSettings> &defaults = std::nullopt);

    /** The open session that was resumed from this conversation or has it now; null without one. */
    [[nodiscard]] ProjectChat *conversation(const QString &conversationId) const;
    /** Opens a session on a past conversation, with what was read of it. */
    ProjectChat *resumeSession(const ResumableSession &session, const PastConversation &past);
    /** The same without having read it. */
    ProjectChat *openUnread(const ResumableSession &session);

    /** Takes sessions out; each is deleted when control returns to the event loop. They are not stopped
     * first. */
    void remove(const QUuid &id);
    void removeSessions(const QString &alias);

Q_SIGNALS:
    void sessionAdded(Vesk::ProjectChat *chat);
    void sessionAboutToBeRemoved(Vesk::ProjectChat *chat);

private:
    ProjectChat *makeSession(const QString &alias, const QString &path, const QString &title,
                             const ClaudeProjectSettings &settings);
    void add(ProjectChat *chat);

    SessionServices m_services;
    QList<ProjectChat *> m_sessions;
};

} // namespace Vesk
