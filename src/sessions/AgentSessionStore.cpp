#include "sessions/AgentSessionStore.h"

#include "core/UsageRecorder.h"

#include <QDir>

#include <algorithm>
#include <iterator>

namespace Vesk
{

AgentSessionStore::AgentSessionStore(SessionServices services, QObject *parent)
    : QObject(parent)
    , m_services(std::move(services))
{
}

QList<ProjectChat *> AgentSessionStore::sessions(const QString &alias) const
{
    QList<ProjectChat *> found;
    std::copy_if(m_sessions.cbegin(), m_sessions.cend(), std::back_inserter(found),
                 [&](const ProjectChat *chat) { return chat->alias() == alias; });
    return found;
}

ProjectChat *AgentSessionStore::session(const QUuid &id) const
{
    const auto found = std::find_if(m_sessions.cbegin(), m_sessions.cend(),
                                    [&](const ProjectChat *chat) { return chat->id() == id; });
    return found == m_sessions.cend() ? nullptr : *found;
}

ProjectChat *AgentSessionStore::conversation(const QString &conversationId) const
{
    const auto found = std::find_if(m_sessions.cbegin(), m_sessions.cend(), [&](const ProjectChat *chat) {
        return chat->sessionId() == conversationId || chat->resumedSessionId() == conversationId;
    });
    return found == m_sessions.cend() ? nullptr : *found;
}

ProjectChat *AgentSessionStore::newSession(const ProjectCatalogEntry &entry, bool includeLocalSettings,
                                           const std::optional<ClaudeProjectSettings> &defaults)
{
    const QString title = QStringLiteral("Session %1").arg(sessions(entry.alias).size() + 1);
    ProjectChat *chat = makeSession(
        entry.alias, entry.path, title,
        defaults ? *defaults
                 : ClaudeSettingsResolver::resolve(entry.path, QDir::homePath(), includeLocalSettings));
    UsageRecorder::record(FeatureSignal::SessionStarted);
    add(chat);
    return chat;
}

ProjectChat *AgentSessionStore::resumeSession(const ResumableSession &session, const PastConversation &past)
{
    ProjectChat *chat = makeSession(session.alias, session.cwd, past.title,
                                    ClaudeSettingsResolver::resolve(session.cwd, QDir::homePath(), true));
    chat->seedResume(session.id, past.messages, past.workflows.tasks);
    chat->seedRestoredContext(past.context);
    UsageRecorder::record(FeatureSignal::SessionResumed);
    add(chat);
    return chat;
}

ProjectChat *AgentSessionStore::openUnread(const ResumableSession &session)
{
    ProjectChat *chat = makeSession(session.alias, session.cwd, session.title,
                                    ClaudeSettingsResolver::resolve(session.cwd, QDir::homePath(), true));
    chat->seedResume(session.id, {}, {}); // before anybody hears of it
    add(chat);
    return chat;
}

ProjectChat *AgentSessionStore::makeSession(const QString &alias, const QString &path, const QString &title,
                                            const ClaudeProjectSettings &settings)
{
    auto *chat = new ProjectChat(QUuid::createUuid(), alias, path, title,
                                 resolveEnv ? resolveEnv() : QHash<QString, QString>(), m_services, this);
    chat->applyProjectDefaults(settings);
    chat->onStreamNote = [this](const QString &line) {
        if (streamNoteSink)
            streamNoteSink(line);
    };
    chat->onFileLink = [this, chat](const QString &linked, const QString &realPath) {
        return fileLinkSink && fileLinkSink(*chat, linked, realPath);
    };
    return chat;
}

void AgentSessionStore::add(ProjectChat *chat)
{
    m_sessions.append(chat);
    Q_EMIT sessionAdded(chat);
}

void AgentSessionStore::remove(const QUuid &id)
{
    ProjectChat *chat = session(id);
    if (!chat)
        return;
    Q_EMIT sessionAboutToBeRemoved(chat);
    m_sessions.removeOne(chat);
    chat->deleteLater();
}

void AgentSessionStore::removeSessions(const QString &alias)
{
    for (const ProjectChat *chat : sessions(alias))
        remove(chat->id());
}

} // namespace Vesk
