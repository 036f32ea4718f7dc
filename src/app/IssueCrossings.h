// Where the issue tracker and the sessions meet: an issue is handed to a session, a session leads back to
// one.
#pragma once

#include "core/AuditEvent.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QUuid>

#include <functional>
#include <optional>

namespace Vesk
{

class AgentSessionStore;
class Preferences;
class ProjectCatalog;
class ProjectChat;

/** The tracker of a project is to show an issue. */
struct IssueSelectionRequest {
    QString alias;
    QString path;
    QUuid token; ///< another one each time: the same issue can be asked for again
};

/**
 * Main thread only. An unknown project does nothing. What the agent is to do stands in the composer of the
 * new session: the person reads it and sends it.
 */
class IssueCrossings : public QObject
{
    Q_OBJECT

public:
    using Log = std::function<void(const AuditEvent &event)>;

    IssueCrossings(AgentSessionStore &store, const ProjectCatalog &catalog, const Preferences &preferences,
                   Log log, QObject *parent = nullptr);

    // Set by the windows; each may be empty.
    std::function<void(const QString &alias)> openIssuesWindow;
    std::function<void()> openSessionWindow; ///< brings it to the front

    /** A new session on an issue, with the model and effort that its file recommends. */
    void workOnIssue(const QString &alias, const QString &issuePath);
    /** A new session that is to fill a new issue folder; `key` is the prefix of the numbers. */
    void startIssueTriage(const QString &alias, const QString &folderPath, const QString &key);

    /** Shows an issue in the tracker. */
    void openIssueFromChat(const QString &alias, const QString &issuePath);
    /** The same for a file that a session's transcript links to; false when it is no issue of the project, or
        no tracker is there to show it. `realPath` is the path with all links resolved; empty for a file that
        is not there, of which it is only told whether the tracker would show it. */
    bool openLinkedFile(const ProjectChat &chat, const QString &path, const QString &realPath);

    /** The newest request, for the tracker of this project; it is given once. */
    [[nodiscard]] std::optional<IssueSelectionRequest> takeSelectionRequest(const QString &alias);

    /** The open sessions that were begun on this issue, in opening order. */
    [[nodiscard]] QList<ProjectChat *> sessionsOn(const QString &issuePath) const;

Q_SIGNALS:
    void sessionChosen(Vesk::ProjectChat *chat); ///< the window is to show this session
    void selectionRequested(const QString &alias);
    void sessionsChanged(); ///< sessionsOn() of some issue

private:
    [[nodiscard]] ProjectChat *openSession(const QString &alias);
    void finish(ProjectChat *chat, const QString &logLine);

    AgentSessionStore &m_store;
    const ProjectCatalog &m_catalog;
    const Preferences &m_preferences;
    Log m_log;
    std::optional<IssueSelectionRequest> m_request;
    QHash<QUuid, QString> m_issueOf; // by session
};

} // namespace Vesk
