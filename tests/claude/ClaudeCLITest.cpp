#include "claude/ClaudeCLI.h"

#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

using namespace Vesk;
using namespace std::chrono_literals;

class ClaudeCLITest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyRegularExecutableFilesPass()
    {
        const QTemporaryDir folder;
        const auto path = [&](const char *name) { return folder.filePath(QLatin1StringView(name)); };
        QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("directory")));
        program(path("program"), "");
        QFile plain(path("plain"));
        QVERIFY(plain.open(QIODevice::WriteOnly));
        QVERIFY(QFile::link(path("program"), path("link")));
        QVERIFY(QFile::link(path("gone"), path("dangling")));
        QVERIFY(ClaudeCLI::isExecutableFile(path("program")));
        QVERIFY(ClaudeCLI::isExecutableFile(path("link")));
        for (const char *name : {"directory", "plain", "dangling", "missing"})
            QVERIFY2(!ClaudeCLI::isExecutableFile(path(name)), name);
    }

    void theFirstCandidateOfHomeIsTaken()
    {
        const QTemporaryDir home;
        const QString path = ClaudeCLI::candidatePaths(home.path()).constFirst();
        QCOMPARE(path, home.filePath(QStringLiteral(".local/bin/claude")));
        QVERIFY(QDir(home.path()).mkpath(QStringLiteral(".local/bin")));
        program(path, "");
        QCOMPARE(ClaudeCLI::resolveExecutable(home.path()), path);
    }

    void whatALoginShellSays_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<bool>("found");
        QTest::newRow("path") << QByteArray("echo \"$FOUND\"") << true;
        QTest::newRow("asked as a login shell")
            << QByteArray("[ \"$1\" = -lc ] && [ \"$2\" = 'command -v claude' ] && echo \"$FOUND\"") << true;
        QTest::newRow("greeting before it") << QByteArray("echo Welcome; echo \"  $FOUND  \"") << true;
        QTest::newRow("noise on standard error") << QByteArray("echo bad >&2; echo \"$FOUND\"") << true;
        QTest::newRow("alias") << QByteArray("echo \"alias claude='$FOUND'\"") << false;
        QTest::newRow("bare name") << QByteArray("echo claude") << false;
        QTest::newRow("missing file") << QByteArray("echo \"$FOUND.gone\"") << false;
        QTest::newRow("nothing") << QByteArray("exit 1") << false;
        QTest::newRow("waits for input") << QByteArray("read line; echo \"$FOUND\"") << true;
        QTest::newRow("hangs with a child") << QByteArray("sleep 3600 & sleep 3600") << false;
    }

    void whatALoginShellSays()
    {
        QFETCH(QByteArray, script);
        QFETCH(bool, found);
        const QTemporaryDir folder;
        const QString claude = folder.filePath(QStringLiteral("claude"));
        const QString shell = folder.filePath(QStringLiteral("shell"));
        program(claude, "");
        program(shell, "FOUND=" + QFile::encodeName(claude) + "\n" + script);
        QCOMPARE(ClaudeCLI::probeLoginShell(shell, 2s), found ? claude : QString());
    }

    void aCancelledProbeEndsAtOnce()
    {
        const QTemporaryDir folder;
        const QString shell = folder.filePath(QStringLiteral("shell"));
        program(shell, "sleep 3600");
        const std::atomic_bool cancelled = true;
        QCOMPARE(ClaudeCLI::probeLoginShell(shell, 1h, &cancelled), QString());
        QCOMPARE(ClaudeCLI::probeLoginShell(folder.filePath(QStringLiteral("missing"))), QString());
    }

    void theAnswerIsKeptAndGivenToTheLiving()
    {
        const QTemporaryDir home;
        const QByteArray before = qgetenv("HOME");
        qputenv("HOME", QFile::encodeName(home.path()));
        QVERIFY(QDir(home.path()).mkpath(QStringLiteral(".local/bin")));
        const QString claude = home.filePath(QStringLiteral(".local/bin/claude"));
        program(claude, "");

        ExecutableLocator locator;
        const QSignalSpy spy(&locator, &ExecutableLocator::resolved);
        QStringList given;
        auto dead = std::make_unique<QObject>();
        locator.whenResolved(dead.get(), [&](const QString &) { given << QStringLiteral("dead"); });
        locator.whenResolved(this, [&](const QString &path) { given << path; });
        dead.reset();
        QVERIFY(!locator.isResolved());
        QTRY_COMPARE(spy.count(), 1);
        qputenv("HOME", before);

        QVERIFY(QFile::remove(claude));
        locator.whenResolved(this, [&](const QString &path) { given << path; });
        locator.resolve();
        QCOMPARE(given, QStringList({claude, claude}));
        QCOMPARE(locator.path(), claude);
    }

    void aFixedPathIsKnownAtOnce()
    {
        ExecutableLocator none {QString()};
        QVERIFY(none.isResolved());
        bool called = false;
        none.whenResolved(this, [&](const QString &path) { called = path.isEmpty(); });
        QVERIFY(called);
    }

private:
    static void program(const QString &path, const QByteArray &body)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + body + "\n");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
};

VESK_TEST(ClaudeCLITest)
#include "ClaudeCLITest.moc"
