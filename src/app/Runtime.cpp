#include "app/Runtime.h"

#include "core/LogindInhibitor.h"
#include "core/UsageRecorder.h"
#include "sessions/ProjectChat.h"

namespace Vesk
{

Runtime::Runtime(AuditLogger &auditLogger, Preferences &preferences, const RuntimePaths &paths,
                 ExecutableLocator &locator, QObject *parent)
    : QObject(parent)
    , m_auditLogger(auditLogger)
    , m_preferences(preferences)
    , m_locator(locator)
    , m_keepAwake(preferences, auditLogger, logindIdleInhibition())
    , m_auditWatch(auditLogger)
    , m_catalog(paths.catalog)
    , m_writableSecrets(paths.writableSecrets)
    , m_secrets(CompositeSecretStore::overFiles(paths.candidateSecrets))
    , m_agentStore({.locator = &locator,
                    .keepAwake = &m_keepAwake,
                    .answerLanguage = [&preferences] { return preferences.answerLanguage(); },
                    .cachesDir = paths.caches})
    , m_resume(m_agentStore, m_catalog, [this](const AuditEvent &event) { log(event); })
    , m_issues(m_agentStore, m_catalog, preferences, [this](const AuditEvent &event) { log(event); })
    , m_drafts(m_agentStore, paths.drafts)
{
    m_issues.openSessionWindow = [this] {
        if (openMainWindow)
            openMainWindow();
    };
    m_agentStore.streamNoteSink = [this](const QString &line) { log(AuditEvent::info(line)); };
}

Runtime::~Runtime() = default;

void Runtime::start()
{
    m_auditWatch.startAuditWatch();
    m_locator.resolve();
    if (const auto loaded = m_catalog.load(); !loaded) {
        m_catalogError = loaded.error().text;
        setStatus(QStringLiteral("error: ") + m_catalogError);
        log(AuditEvent::systemError(QStringLiteral("start failed: ") + m_catalogError));
        m_auditWatch.refreshAuditWriteFailure();
        return;
    }
    Q_EMIT catalogEntriesChanged();
    setStatus(QStringLiteral("running"));
    log(AuditEvent::info(QStringLiteral("started (in-app only)")));
}

void Runtime::stop()
{
    m_editorFlushers.flushAll();
    int terminated = 0;
    for (ProjectChat *chat : m_agentStore.sessions())
        terminated += chat->terminateChild() ? 1 : 0;
    if (terminated > 0)
        log(AuditEvent::info(
            QStringLiteral("terminated %1 child agent process(es) at shutdown").arg(terminated)));
    m_drafts.save();
    m_auditWatch.stopAuditWatch();
    setStatus(QStringLiteral("stopped"));
}

void Runtime::upsertCatalogEntry(const ProjectCatalogEntry &entry)
{
    UsageRecorder::record(FeatureSignal::ProjectAdded);
    if (const auto saved = m_catalog.upsert(entry); !saved)
        log(AuditEvent::systemError(QStringLiteral("catalog upsert failed: ") + saved.error().text));
    Q_EMIT catalogEntriesChanged();
}

void Runtime::setProjectColor(const QString &alias, const QString &hex)
{
    auto entry = m_catalog.entry(alias);
    if (!entry)
        return;
    entry->colorHex = hex;
    if (const auto saved = m_catalog.upsert(*entry); !saved)
        log(AuditEvent::systemError(QStringLiteral("setProjectColor failed: ") + saved.error().text));
    Q_EMIT catalogEntriesChanged();
}

void Runtime::removeProject(const QString &alias)
{
    UsageRecorder::record(FeatureSignal::ProjectRemoved);
    for (ProjectChat *chat : m_agentStore.sessions(alias))
        chat->stop();
    m_agentStore.removeSessions(alias);
    removeCatalogEntry(alias);
}

void Runtime::removeCatalogEntry(const QString &alias)
{
    if (const auto saved = m_catalog.remove(alias); !saved)
        log(AuditEvent::systemError(QStringLiteral("catalog remove failed: ") + saved.error().text));
    Q_EMIT catalogEntriesChanged();
}

ProjectChat *Runtime::newSession(const QString &alias)
{
    const auto entry = m_catalog.entry(alias);
    return entry ? m_agentStore.newSession(*entry) : nullptr;
}

void Runtime::closeSession(ProjectChat *chat)
{
    const QString name = chat->alias() + u'/' + chat->id().toString(QUuid::WithoutBraces);
    if (const auto waiter = std::exchange(chat->onRunFinished, nullptr)) {
        waiter(false);
        log(AuditEvent::info(
            QStringLiteral("session '%1' closed mid-run — 대기 중이던 완료 훅을 실패로 종결").arg(name)));
    }
    chat->stop();
    m_agentStore.remove(chat->id());
    log(AuditEvent::info(QStringLiteral("hosted session '%1' closed").arg(name)));
}

void Runtime::setStatus(const QString &status)
{
    if (m_status == status)
        return;
    m_status = status;
    Q_EMIT statusChanged();
}

void Runtime::log(const AuditEvent &event)
{
    m_auditLogger.log(event);
    m_auditWatch.noteBatch();
}

} // namespace Vesk
