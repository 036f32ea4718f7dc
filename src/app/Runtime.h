// The one coordinator: owns the services, wires them, and knows the order in which they come up and go down.
#pragma once

#include "app/IssueCrossings.h"
#include "claude/ClaudeCLI.h"
#include "core/AuditLogger.h"
#include "core/AuditWatch.h"
#include "core/KeepAwakeController.h"
#include "core/Preferences.h"
#include "core/ProjectCatalog.h"
#include "core/SecretStore.h"
#include "markdown/EditorFlushers.h"
#include "sessions/AgentSessionStore.h"
#include "sessions/DraftKeeper.h"
#include "sessions/SessionResume.h"

#include <QObject>

#include <functional>
#include <memory>

namespace Vesk
{

/** Where Runtime's files lie; computed once by whoever builds it. */
struct RuntimePaths {
    QString catalog;              ///< projects.json
    QString writableSecrets;      ///< secrets.env in the application-support folder
    QStringList candidateSecrets; ///< every secrets file, by priority
    QString drafts {};            ///< drafts.json
    QString caches {};            ///< the caches folder
};

/**
 * Built by AppDelegate, which alone calls start() and stop(), each once. All of its state belongs to the main
 * thread. What the window shows is here or in a session.
 */
class Runtime : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString status READ status NOTIFY statusChanged)

public:
    Runtime(AuditLogger &auditLogger, Preferences &preferences, const RuntimePaths &paths,
            ExecutableLocator &locator, QObject *parent = nullptr);
    ~Runtime() override;

    void start();
    void stop();

    /** "stopped", "running", or "error: <reason>" when the catalog could not be read. */
    [[nodiscard]] const QString &status() const { return m_status; }
    /** The reason alone when status() is an error; empty otherwise. */
    [[nodiscard]] const QString &catalogError() const { return m_catalogError; }

    [[nodiscard]] const QList<ProjectCatalogEntry> &catalogEntries() const { return m_catalog.entries(); }
    [[nodiscard]] const QString &catalogPath() const { return m_catalog.storeURL(); }
    [[nodiscard]] AgentSessionStore &agentStore() { return m_agentStore; }
    [[nodiscard]] SessionResume &resume() { return m_resume; }
    [[nodiscard]] EditorFlushers &editorFlushers() { return m_editorFlushers; }
    [[nodiscard]] IssueCrossings &issues() { return m_issues; }
    [[nodiscard]] AuditWatch &auditWatch() { return m_auditWatch; }
    [[nodiscard]] AuditLogger &auditLogger() { return m_auditLogger; }
    [[nodiscard]] Preferences &preferences() { return m_preferences; }
    [[nodiscard]] ExecutableLocator &locator() { return m_locator; }
    [[nodiscard]] KeepAwakeController &keepAwake() { return m_keepAwake; }
    [[nodiscard]] const SecretStore &secrets() const { return m_secrets; }
    [[nodiscard]] EnvFileSecretStore &writableSecrets() { return m_writableSecrets; }

    void upsertCatalogEntry(const ProjectCatalogEntry &entry);
    void setProjectColor(const QString &alias, const QString &hex);
    void removeProject(const QString &alias);
    void removeCatalogEntry(const QString &alias);

    /** Opens a session on a project; null when there is no such project. */
    ProjectChat *newSession(const QString &alias);
    /** Ends and forgets a session: its waiter is told, its child is asked to go. The object dies later. */
    void closeSession(ProjectChat *chat);

    // Set by the window; called from outside it (a second start of the program, a notice).
    std::function<void()> openMainWindow;

Q_SIGNALS:
    void statusChanged();
    void catalogEntriesChanged();

private:
    void setStatus(const QString &status);
    void log(const AuditEvent &event);

    AuditLogger &m_auditLogger;
    Preferences &m_preferences;
    ExecutableLocator &m_locator;
    KeepAwakeController m_keepAwake;
    AuditWatch m_auditWatch;
    ProjectCatalog m_catalog;
    EnvFileSecretStore m_writableSecrets;
    CompositeSecretStore m_secrets;
    AgentSessionStore m_agentStore;
    SessionResume m_resume;
    IssueCrossings m_issues;
    DraftKeeper m_drafts;
    EditorFlushers m_editorFlushers;
    QString m_status = QStringLiteral("stopped");
    QString m_catalogError;
};

} // namespace Vesk
