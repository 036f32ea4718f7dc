#include "app/AppDelegate.h"

#include "core/UserDefaultsMigration.h"
#include "sessions/AttachmentCache.h"

#include <QCoreApplication>

namespace Vesk
{

namespace
{

RuntimePaths runtimePaths(const AppPaths &paths)
{
    return {
        .catalog = paths.projectsFile(),
        .writableSecrets = paths.secretsFile(),
        .candidateSecrets = paths.candidateSecretURLs(),
        .drafts = paths.draftsFile(),
        .caches = paths.cachesDir(),
    };
}

} // namespace

AppDelegate::AppDelegate(const AppPaths &paths, QObject *parent)
    : QObject(parent)
    , m_paths(paths)
    , m_auditLogger(paths.auditLogFile())
    , m_preferences(paths.preferencesFile())
    , m_runtime(m_auditLogger, m_preferences, runtimePaths(paths), m_locator)
{
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
            &AppDelegate::applicationWillTerminate);
}

AppDelegate::~AppDelegate()
{
    applicationWillTerminate();
}

void AppDelegate::applicationDidFinishLaunching()
{
    m_signalSources = std::make_unique<SignalSources>([] { QCoreApplication::exit(0); });
    UserDefaultsMigration::runOnce(m_preferences, m_paths.olderPreferencesFile());
    m_runtime.start();
    AttachmentCache::pruneAtLaunch(m_paths.cachesDir());
}

void AppDelegate::applicationWillTerminate()
{
    if (m_terminated)
        return;
    m_terminated = true;
    m_runtime.stop();
}

} // namespace Vesk
