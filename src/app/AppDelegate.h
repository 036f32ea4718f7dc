// The life of the process: builds what everything hangs from, starts it, and stops it on every road out.
#pragma once

#include "app/Runtime.h"
#include "app/SignalSources.h"
#include "core/AppPaths.h"

#include <QObject>

#include <memory>

namespace Vesk
{

/**
 * Built once, after the application object. Quit, SIGTERM and SIGINT all end in applicationWillTerminate().
 */
class AppDelegate : public QObject
{
    Q_OBJECT

public:
    explicit AppDelegate(const AppPaths &paths, QObject *parent = nullptr);
    ~AppDelegate() override;

    /** Signal handlers, the old preferences, then Runtime::start(). */
    void applicationDidFinishLaunching();

    [[nodiscard]] Runtime &runtime() { return m_runtime; }
    [[nodiscard]] const AppPaths &paths() const { return m_paths; }

private:
    void applicationWillTerminate();

    AppPaths m_paths;
    AuditLogger m_auditLogger;
    Preferences m_preferences;
    ExecutableLocator m_locator;
    Runtime m_runtime;
    std::unique_ptr<SignalSources> m_signalSources;
    bool m_terminated = false;
};

} // namespace Vesk
