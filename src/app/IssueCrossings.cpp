#include "app/IssueCrossings.h"

#include "app/IssuePromptTexts_p.h"
#include "core/Preferences.h"
#include "core/ProjectCatalog.h"
#include "core/UsageRecorder.h"
#include "issues/IssueDocument.h"
#include "issues/IssueFile.h"
#include "issues/IssueFolder.h"
#include "issues/IssueFolderPreference.h"
#include "sessions/AgentSessionStore.h"
#include "sessions/IssueRecommendedRun.h"

#include <QDir>
#include <QFileInfo>

namespace Vesk
{

namespace
{

QString relativeTo(const QString &project, const QString &path)
{
    const QString prefix = project + u'/';
    return path.startsWith(prefix) ? path.sliced(prefix.size()) : path;
}

QString lastPart(const QString &path)
{
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

} // namespace

IssueCrossings::IssueCrossings(AgentSessionStore &store, const ProjectCatalog &catalog,
                               const Preferences &preferences, Log log, QObject *parent)
    : QObject(parent)
    , m_store(store)
    , m_catalog(catalog)
    , m_preferences(preferences)
    , m_log(std::move(log))
{
    m_store.fileLinkSink = [this](const ProjectChat &chat, const QString &path, const QString &realPath) {
        return openLinkedFile(chat, path, realPath);
    };
    connect(&m_store, &AgentSessionStore::sessionAboutToBeRemoved, this, [this](const ProjectChat *chat) {
        if (m_issueOf.remove(chat->id()))
            Q_EMIT sessionsChanged();
    });
}

void IssueCrossings::workOnIssue(const QString &alias, const QString &issuePath)
{
    ProjectChat *chat = openSession(alias);
    if (!chat)
        return;
    chat->setComposerInput(IssuePromptTexts::work(relativeTo(chat->cwd(), issuePath)));
    const QString name = lastPart(issuePath);
    if (const auto text = IssueFile::read(issuePath)) {
        const auto issue = IssueDocument::parse(*text, name);
        chat->applyIssueRecommendation(IssueRecommendationMap::run(
            issue.value(IssueKeys::recommendedModel()), issue.value(IssueKeys::recommendedEffort())));
    }
    m_issueOf.insert(chat->id(), QDir::cleanPath(issuePath));
    Q_EMIT sessionsChanged();
    UsageRecorder::record(FeatureSignal::IssueHandedToSession);
    finish(chat, QStringLiteral("issue session for '%1' (%2)").arg(name, alias));
}

void IssueCrossings::startIssueTriage(const QString &alias, const QString &folderPath, const QString &key)
{
    ProjectChat *chat = openSession(alias);
    if (!chat)
        return;
    chat->setComposerInput(IssuePromptTexts::triage(relativeTo(chat->cwd(), folderPath), key));
    UsageRecorder::record(FeatureSignal::IssueTrackingStarted);
    finish(chat, QStringLiteral("issue triage session for %1 (%2, key=%3)").arg(alias, folderPath, key));
}

void IssueCrossings::openIssueFromChat(const QString &alias, const QString &issuePath)
{
    m_request = {alias, issuePath, QUuid::createUuid()};
    Q_EMIT selectionRequested(alias);
    if (openIssuesWindow)
        openIssuesWindow(alias);
    m_log(AuditEvent::info(QStringLiteral("chat link → issue '%1' (%2)").arg(lastPart(issuePath), alias)));
    UsageRecorder::record(FeatureSignal::IssueOpenedFromChat);
}

bool IssueCrossings::openLinkedFile(const ProjectChat &chat, const QString &path, const QString &realPath)
{
    const auto folder = IssueFolderPreference::folder(chat.cwd(), m_preferences);
    if (!openIssuesWindow || !folder)
        return false;
    if (realPath.isEmpty())
        return IssueFolder::isIssuePath(path, *folder);
    // The tracker knows an issue by its name in the folder that was chosen, whichever way the link goes
    // there.
    for (const auto &[linked, place] :
         {std::pair(path, *folder), std::pair(realPath, QFileInfo(*folder).canonicalFilePath())}) {
        if (IssueFolder::isIssuePath(linked, place)) {
            openIssueFromChat(chat.alias(), *folder + u'/' + lastPart(QDir::cleanPath(linked)));
            return true;
        }
    }
    return false;
}

std::optional<IssueSelectionRequest> IssueCrossings::takeSelectionRequest(const QString &alias)
{
    return m_request && m_request->alias == alias ? std::exchange(m_request, std::nullopt) : std::nullopt;
}

QList<ProjectChat *> IssueCrossings::sessionsOn(const QString &issuePath) const
{
    const QString path = QDir::cleanPath(issuePath);
    QList<ProjectChat *> sessions = m_store.sessions();
    sessions.removeIf([&](const ProjectChat *chat) { return m_issueOf.value(chat->id()) != path; });
    return sessions;
}

ProjectChat *IssueCrossings::openSession(const QString &alias)
{
    const auto entry = m_catalog.entry(alias);
    return entry ? m_store.newSession(*entry) : nullptr;
}

void IssueCrossings::finish(ProjectChat *chat, const QString &logLine)
{
    Q_EMIT sessionChosen(chat);
    m_log(AuditEvent::info(logLine));
    if (openSessionWindow)
        openSessionWindow();
}

} // namespace Vesk
