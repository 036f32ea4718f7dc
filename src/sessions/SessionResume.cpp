#include "sessions/SessionResume.h"

#include "base/PoolWork.h"
#include "claude/TranscriptFolders.h"
#include "core/ProjectCatalog.h"
#include "sessions/AgentSessionStore.h"
#include "sessions/PastConversation.h"

#include <QDir>

namespace Vesk
{

SessionResume::SessionResume(AgentSessionStore &store, const ProjectCatalog &catalog, Log log,
                             QObject *parent)
    : QObject(parent)
    , m_store(store)
    , m_catalog(catalog)
    , m_log(std::move(log))
{
    connect(&store, &AgentSessionStore::sessionAboutToBeRemoved, this,
            [this](ProjectChat *chat) { m_unread.remove(chat->id()); });
}

QString SessionResume::historyRoot()
{
    return TranscriptFolders::root(QDir::homePath());
}

void SessionResume::resumeSession(const ResumableSession &session, QObject *context, Done done)
{
    if (ProjectChat *chat = m_store.conversation(session.id)) {
        refreshUntitledResumeTitle(chat, session);
        done(chat);
        return;
    }
    if (!m_catalog.entry(session.alias)) {
        done(nullptr);
        return;
    }
    QList<Waiter> &waiters = m_loading[session.id];
    waiters.append({context, std::move(done)});
    if (waiters.size() > 1)
        return;
    workOnPool(
        this, [session] { return readPastConversation(session); },
        [this, session](const PastConversation &past) {
            const QList<Waiter> waiting = m_loading.take(session.id);
            ProjectChat *chat = open(session, past);
            for (const Waiter &waiter : waiting) {
                if (waiter.context)
                    waiter.done(chat);
            }
        });
}

ProjectChat *SessionResume::open(const ResumableSession &session, const PastConversation &past)
{
    // Both may have changed while the files were read.
    if (ProjectChat *chat = m_store.conversation(session.id))
        return chat;
    if (!m_catalog.entry(session.alias))
        return nullptr;
    ProjectChat *chat = m_store.resumeSession(session, past);
    logResumed(*chat, session, past);
    return chat;
}

void SessionResume::logResumed(const ProjectChat &chat, const ResumableSession &session,
                               const PastConversation &past)
{
    QString line = QStringLiteral("resumed session '%1' as %2 (%3 msgs)")
                       .arg(session.id, chat.id().toString(QUuid::WithoutBraces))
                       .arg(past.messages.size());
    if (const auto &workflows = past.workflows; !workflows.tasks.isEmpty() || workflows.skipped > 0)
        line += QStringLiteral(" · workflows %1 restored, %2 skipped")
                    .arg(workflows.tasks.size())
                    .arg(workflows.skipped);
    m_log(AuditEvent::info(line));
}

void SessionResume::find(const QList<RememberedConversation> &conversations, QObject *context,
                         std::function<void(const QList<ResumableSession> &)> found)
{
    QList<ResumableSession> wanted;
    for (const RememberedConversation &conversation : conversations) {
        const auto project = m_catalog.entry(conversation.alias);
        if (!project) {
            m_log(AuditEvent::info(QStringLiteral("session '%1' not reopened: project '%2' is gone")
                                       .arg(conversation.id, conversation.alias)));
            continue;
        }
        wanted.append(
            {.id = conversation.id,
             .cwd = project->path,
             .alias = conversation.alias,
             .title = conversation.title.isEmpty() ? ClaudeSessionHistory::untitled() : conversation.title,
             .lastModified = {},
             .path = {},
             .size = 0});
    }
    workOnPool(
        context,
        [wanted, root = historyRoot()] {
            QList<ResumableSession> looked = wanted;
            for (ResumableSession &session : looked) {
                if (const auto file = ClaudeSessionHistory::transcript(root, session.cwd, session.id)) {
                    session.path = file->path;
                    session.size = file->size;
                    session.lastModified = file->modified();
                }
            }
            return looked;
        },
        [self = QPointer(this), found = std::move(found)](QList<ResumableSession> looked) {
            if (!self)
                return;
            looked.removeIf([&self](const ResumableSession &session) {
                const bool gone = session.path.isEmpty();
                if (gone)
                    self->m_log(AuditEvent::info(
                        QStringLiteral("session '%1' not reopened: its transcript is gone").arg(session.id)));
                return gone;
            });
            found(looked);
        });
}

ProjectChat *SessionResume::openUnread(const ResumableSession &session)
{
    if (m_store.conversation(session.id) || m_loading.contains(session.id) || !m_catalog.entry(session.alias))
        return nullptr;
    ProjectChat *chat = m_store.openUnread(session);
    m_unread.insert(chat->id(), session);
    return chat;
}

void SessionResume::read(ProjectChat *chat)
{
    if (!m_unread.contains(chat->id()))
        return;
    const ResumableSession session = m_unread.take(chat->id());
    workOnPool(
        chat, [session] { return readPastConversation(session); },
        [self = QPointer(this), session, chat](const PastConversation &past) {
            chat->seedHistory(past.messages, past.workflows.tasks);
            if (!chat->isRunning())
                chat->seedRestoredContext(past.context);
            if (chat->title() == ClaudeSessionHistory::untitled())
                chat->setTitle(past.title);
            if (self)
                self->logResumed(*chat, session, past);
        });
}

void SessionResume::refreshUntitledResumeTitle(ProjectChat *chat, const ResumableSession &session)
{
    if (chat->title() != ClaudeSessionHistory::untitled())
        return;
    workOnPool(
        chat, [session, rows = chat->messages().rows()] { return resolveResumeTitle(session, rows); },
        [chat](const QString &title) {
            if (chat->title() == ClaudeSessionHistory::untitled())
                chat->setTitle(title);
        });
}

ResumeDeleteOutcome SessionResume::deleteResumableSession(const ResumableSession &session)
{
    if (m_store.conversation(session.id) || m_loading.contains(session.id)) {
        m_log(AuditEvent::info(QStringLiteral("delete blocked (open tab): session '%1'").arg(session.id)));
        return ResumeDeleteOutcome::Blocked;
    }
    if (auto trashed = ClaudeSessionHistory::moveToTrash(session.path, historyRoot())) {
        m_trashed = *std::move(trashed);
        m_lastDeleted = m_trashed.inTrash.isEmpty() ? std::nullopt : std::optional(session);
        m_log(AuditEvent::info(QStringLiteral("trashed session '%1'").arg(session.id)));
        return ResumeDeleteOutcome::Deleted;
    }
    m_log(AuditEvent::systemError(
        QStringLiteral("delete failed: session '%1' (%2)").arg(session.id, session.path)));
    return ResumeDeleteOutcome::Failed;
}

ClaudeSessionHistory::TrashReturn SessionResume::undoDelete()
{
    using ClaudeSessionHistory::TrashReturn;
    if (!m_lastDeleted)
        return TrashReturn::Gone;
    const QString id = m_lastDeleted->id;
    const TrashReturn outcome = ClaudeSessionHistory::takeFromTrash(m_trashed);
    if (outcome == TrashReturn::Returned)
        m_log(AuditEvent::info(QStringLiteral("session '%1' taken back out of the trash").arg(id)));
    else
        m_log(AuditEvent::systemError(
            QStringLiteral("session '%1' not taken back out of the trash (%2)").arg(id, m_trashed.inTrash)));
    if (outcome != TrashReturn::Occupied)
        m_lastDeleted.reset();
    return outcome;
}

} // namespace Vesk
