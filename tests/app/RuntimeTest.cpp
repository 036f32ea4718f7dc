// The coordinator: what it loads, what it says when it can't, and in which order things go.
#include "app/Runtime.h"

#include "sessions/ProjectChat.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace Vesk;

namespace
{

/** A Runtime on files of its own, and without a program given with no agent installed. */
struct House {
    explicit House(const QString &program = {})
        : locator(program)
    {
    }

    QTemporaryDir folder;
    ExecutableLocator locator;
    AuditLogger audit {folder.filePath(QStringLiteral("audit.log"))};
    Preferences preferences {folder.filePath(QStringLiteral("preferences.ini"))};
    Runtime runtime {audit, preferences,
                     RuntimePaths {.catalog = folder.filePath(QStringLiteral("projects.json")),
                                   .writableSecrets = folder.filePath(QStringLiteral("secrets.env")),
                                   .candidateSecrets = {folder.filePath(QStringLiteral("secrets.env"))}},
                     locator};

    void writeCatalog(const QByteArray &bytes) const
    {
        QFile file(folder.filePath(QStringLiteral("projects.json")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    [[nodiscard]] QByteArray read(const QString &name) const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] bool logged(const QString &summary) const
    {
        const auto entries = audit.recent(100);
        return std::any_of(entries.begin(), entries.end(),
                           [&](const AuditLogEntry &entry) { return entry.summary.contains(summary); });
    }
};

} // namespace

class RuntimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startPublishesTheCatalog()
    {
        House house;
        house.writeCatalog(
            R"([{"alias":"a","path":"/a","extraEnv":{}},{"alias":"b","path":"/b","extraEnv":{}}])");
        QCOMPARE(house.runtime.status(), QStringLiteral("stopped"));
        house.runtime.start();
        QCOMPARE(house.runtime.status(), QStringLiteral("running"));
        QCOMPARE(house.runtime.catalogEntries().size(), 2);
        QVERIFY(house.logged(QStringLiteral("started (in-app only)")));
        house.runtime.stop();
        QCOMPARE(house.runtime.status(), QStringLiteral("stopped"));
        QVERIFY(!house.logged(QStringLiteral("terminated")));
    }

    void aBrokenCatalogIsSaidAndLeftAlone_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("no JSON") << QByteArray("{{{");
        QTest::newRow("an entry without extraEnv") << QByteArray(R"([{"alias":"a","path":"/a"}])");
        QTest::newRow("empty") << QByteArray();
    }
    void aBrokenCatalogIsSaidAndLeftAlone()
    {
        QFETCH(QByteArray, bytes);
        House house;
        house.writeCatalog(bytes);
        house.runtime.start();
        QVERIFY(house.runtime.status().startsWith(QStringLiteral("error: ")));
        QVERIFY(!house.runtime.catalogError().isEmpty());
        QVERIFY(house.runtime.catalogEntries().isEmpty());
        QVERIFY(house.logged(QStringLiteral("SYS ERR start failed: ")));
        QCOMPARE(house.read(QStringLiteral("projects.json")), bytes);
    }

    void projectsComeBackAfterARestart()
    {
        QTemporaryDir folder;
        House first;
        first.runtime.start();
        first.runtime.upsertCatalogEntry(
            {.alias = QStringLiteral("billing"), .path = QStringLiteral("/src/billing")});
        first.runtime.setProjectColor(QStringLiteral("billing"), QStringLiteral("#61A3E6"));
        first.runtime.setProjectColor(QStringLiteral("nobody"), QStringLiteral("#000000"));

        House second;
        second.writeCatalog(first.read(QStringLiteral("projects.json")));
        second.runtime.start();
        QCOMPARE(second.runtime.catalogEntries(), first.runtime.catalogEntries());
        QCOMPARE(second.runtime.catalogEntries().constFirst().colorHex, QStringLiteral("#61A3E6"));
    }

    void closingASessionEndsItsWaiter()
    {
        House house;
        house.runtime.start();
        house.runtime.upsertCatalogEntry({.alias = QStringLiteral("a"), .path = house.folder.path()});
        QCOMPARE(house.runtime.newSession(QStringLiteral("unknown")), nullptr);
        ProjectChat *chat = house.runtime.newSession(QStringLiteral("a"));
        QVERIFY(chat);
        std::optional<bool> outcome;
        chat->onRunFinished = [&](bool success) { outcome = success; };
        house.runtime.closeSession(chat);
        QCOMPARE(outcome, false);
        QVERIFY(house.logged(QStringLiteral("closed mid-run")));
        QVERIFY(house.runtime.agentStore().sessions().isEmpty());
    }

    void removingAProjectTakesItsSessionsAlong()
    {
        House house;
        house.runtime.start();
        for (const char *alias : {"a", "b"})
            house.runtime.upsertCatalogEntry(
                {.alias = QString::fromLatin1(alias), .path = house.folder.path()});
        house.runtime.newSession(QStringLiteral("a"));
        ProjectChat *kept = house.runtime.newSession(QStringLiteral("b"));
        house.runtime.removeProject(QStringLiteral("a"));
        QCOMPARE(house.runtime.agentStore().sessions(), QList<ProjectChat *> {kept});
        QCOMPARE(house.runtime.catalogEntries().size(), 1);
    }

    void stopAsksEveryChildToEnd()
    {
        const QTemporaryDir tools;
        QFile program(tools.filePath(QStringLiteral("claude")));
        QVERIFY(program.open(QIODevice::WriteOnly) && program.write("#!/bin/sh\nexec sleep 3600\n") > 0);
        program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        program.close();
        House house(program.fileName());
        house.runtime.start();
        house.runtime.upsertCatalogEntry({.alias = QStringLiteral("a"), .path = house.folder.path()});
        ProjectChat *chat = house.runtime.newSession(QStringLiteral("a"));
        house.runtime.newSession(QStringLiteral("a"));
        chat->send(QStringLiteral("go"));
        QTRY_VERIFY(chat->childIsRunning());
        house.runtime.stop();
        QVERIFY(house.logged(QStringLiteral("terminated 1 child agent process(es) at shutdown")));
        QTRY_VERIFY(!chat->childIsRunning());
    }

    void withoutTheProgramATurnSaysHowToInstallIt()
    {
        House house;
        house.runtime.start();
        house.runtime.upsertCatalogEntry({.alias = QStringLiteral("a"), .path = house.folder.path()});
        ProjectChat *chat = house.runtime.newSession(QStringLiteral("a"));
        chat->send(QStringLiteral("안녕"));
        QTRY_VERIFY(!chat->isRunning());
        const auto &last = chat->messages().rows().constLast();
        QVERIFY(last.isError);
        QCOMPARE(last.text, ClaudeCLI::notInstalledMessage());
    }
};

VESK_TEST(RuntimeTest)

#include "RuntimeTest.moc"
