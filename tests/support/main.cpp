// Runs every registered test class. With arguments, QtTest's own: a name of a function runs it in the classes
// that have it. HOME and the XDG folders are a scratch folder, so no test can reach the user's own files.
#include "support/TestRegistry.h"

#include <QCoreApplication>
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
    const QCoreApplication application(argc, argv);
    int failures = 0;
    for (const auto factory : Vesk::Test::registeredTests()) {
        const auto test = factory();
        failures += QTest::qExec(test.get(), argc, argv);
    }
    return failures > 0 ? 1 : 0;
}
