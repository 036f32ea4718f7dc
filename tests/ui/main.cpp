// Runs every registered test class with a window system of its own: the offscreen platform, drawn in
// software. HOME and the XDG folders are a scratch folder, so no test can reach the user's own files.
#include "support/TestRegistry.h"

#include <QGuiApplication>
#include <QTemporaryDir>
#include <QtTest>

#include <vector>

namespace Vesk::Test
{
std::vector<TestFactory> &registeredTests();
}

int main(int argc, char **argv)
{
    QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_DATA_HOME", (home.path() + QStringLiteral("/data")).toUtf8());
    qputenv("XDG_CONFIG_HOME", (home.path() + QStringLiteral("/config")).toUtf8());
    qputenv("XDG_CACHE_HOME", (home.path() + QStringLiteral("/cache")).toUtf8());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    const QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    int failures = 0;
    for (const auto factory : Vesk::Test::registeredTests()) {
        const auto test = factory();
        // One class alone: VESK_TEST_CLASS=ShellWindowTest
        if (const QByteArray only = qgetenv("VESK_TEST_CLASS");
            !only.isEmpty() && only != test->metaObject()->className()) {
            continue;
        }
        failures += QTest::qExec(test.get(), argc, argv);
    }
    return failures > 0 ? 1 : 0;
}
