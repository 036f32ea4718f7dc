#include "claude/ClaudeSettings.h"

#include "claude/GlobalAllowNotice.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Vesk;

class ClaudeSettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theNearestFileThatHasAKeyWins()
    {
        const QTemporaryDir home;
        const QTemporaryDir project;
        write(
            home, "settings.json",
            R"({"model":"claude-opus-4","effortLevel":"low","permissions":{"defaultMode":"auto","allow":["Bash",1]}})");
        write(project, "settings.json", R"({"permissions":{"defaultMode":"acceptEdits"},"model":7})");
        write(project, "settings.local.json", R"({"permissions":{"defaultMode":"plan"},"ultracode":true})");

        const auto watched = ClaudeSettingsResolver::resolve(project.path(), home.path(), true);
        QVERIFY(watched.permissionMode == AgentPermissionMode::Plan);
        QVERIFY(watched.model == ClaudeModel::Opus);
        QVERIFY(watched.effort == AgentEffort::Ultracode);
        QVERIFY(!watched.unknownMode);

        const auto unwatched = ClaudeSettingsResolver::resolve(project.path(), home.path(), false);
        QVERIFY(unwatched.permissionMode == AgentPermissionMode::AcceptEdits);
        QVERIFY(unwatched.effort == AgentEffort::Low);

        QCOMPARE(ClaudeSettingsResolver::globalAllowRules(home.path()), QStringList {QStringLiteral("Bash")});
        QVERIFY(ClaudeSettingsResolver::globalAllowRules(project.path() + QStringLiteral("/none")).isEmpty());
    }

    void aBrokenOrHugeFileCountsAsEmpty()
    {
        const QTemporaryDir home;
        const QTemporaryDir project;
        write(home, "settings.json", R"({"model":"haiku"})");
        for (const QByteArray &text : {QByteArray(R"({"model":"opus")"), QByteArray("[1]"), QByteArray(),
                                       R"({"model":"opus","pad":[])" + QByteArray(9 << 20, ' ') + "}"}) {
            write(project, "settings.json", text);
            QVERIFY(ClaudeSettingsResolver::resolve(project.path(), home.path(), true).model
                    == ClaudeModel::Haiku);
        }
    }

    void modes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("mode");    // the word, empty for absent
        QTest::addColumn<QString>("unknown"); // "-" absent, "?" without text
        QTest::newRow("default") << "default"
                                 << "default"
                                 << "-";
        QTest::newRow("manual") << "manual"
                                << "default"
                                << "-";
        QTest::newRow("bypass") << "bypassPermissions"
                                << "bypassPermissions"
                                << "-";
        QTest::newRow("case counts") << "Plan"
                                     << ""
                                     << "Plan";
        QTest::newRow("empty") << ""
                               << ""
                               << "-";
        QTest::newRow("unknown") << "yolo"
                                 << ""
                                 << "yolo";
        QTest::newRow("32 letters") << QString(32, u'a') << "" << QString(32, u'a');
        QTest::newRow("33 letters") << QString(33, u'a') << ""
                                    << "?";
        QTest::newRow("words") << "run this"
                               << ""
                               << "?";
        QTest::newRow("a line end, one character of the 32")
            << QString(31, u'a') + QStringLiteral("\r\n") << "" << QString(31, u'a') + QStringLiteral("\r\n");
        QTest::newRow("half a line end") << "yolo\n"
                                         << ""
                                         << "?";
        QTest::newRow("letters of other scripts") << QStringLiteral("모드") << ""
                                                  << "?";
    }

    void modes()
    {
        QFETCH(QString, text);
        QFETCH(QString, mode);
        QFETCH(QString, unknown);
        const auto mapped = ClaudeSettingsMap::permissionMode(text);
        QCOMPARE(mapped ? word(*mapped) : QString(), mode);
        const auto left = ClaudeSettingsMap::unknownPermissionMode(text);
        QCOMPARE(left ? left->text.value_or(QStringLiteral("?")) : QStringLiteral("-"), unknown);
    }

    void modelsAndEfforts()
    {
        QVERIFY(ClaudeSettingsMap::model(QStringLiteral("Claude-OPUS-4")) == ClaudeModel::Opus);
        QVERIFY(ClaudeSettingsMap::model(QStringLiteral("sonnet-not-fable")) == ClaudeModel::Fable);
        QVERIFY(!ClaudeSettingsMap::model(QStringLiteral("gpt")) && !ClaudeSettingsMap::model(QString()));
        QVERIFY(ClaudeSettingsMap::effort(QStringLiteral("low"), true) == AgentEffort::Ultracode);
        QVERIFY(ClaudeSettingsMap::effort(QStringLiteral("max"), false) == AgentEffort::Max);
        QVERIFY(!ClaudeSettingsMap::effort(QStringLiteral("MAX"), std::nullopt));
    }

    void whatGlobalRulesMeanForAnUnattendedRun_data()
    {
        QTest::addColumn<QStringList>("opened");
        QTest::addColumn<QStringList>("denied");
        QTest::addColumn<QString>("text");
        const QString head = QStringLiteral("전역 ~/.claude/settings.json이 도구 3건을 미리 허용합니다 — ");
        const QStringList all {QStringLiteral("Bash"), QStringLiteral("WebFetch")};
        QTest::newRow("opened and cut off") << all << all
                                            << head
                + QStringLiteral("Bash · WebFetch가 열려 있습니다. 사람이 없는 회차라 Bash · WebFetch는 앱이 "
                                 "끊습니다. 필요하면 아래 '허용 도구'에 적어 되열 수 있습니다.");
        QTest::newRow("opened and left open") << all << QStringList()
                                              << head
                + QStringLiteral("Bash · WebFetch가 열려 있습니다. 이 회차는 아래 '허용 도구'가 셋 다 되열어 "
                                 "두었습니다 — 전역 허용이 그대로 얹힙니다.");
        QTest::newRow("none of them")
            << QStringList() << QStringList() << head + QStringLiteral("셸·네트워크 도구는 그중에 없습니다.");
    }

    void whatGlobalRulesMeanForAnUnattendedRun()
    {
        QFETCH(QStringList, opened);
        QFETCH(QStringList, denied);
        QTEST((GlobalAllowNotice {3, opened, denied}.text()), "text");
        QVERIFY((GlobalAllowNotice {0, opened, denied}.text().isEmpty()));
    }

private:
    static void write(const QTemporaryDir &folder, const char *name, const QByteArray &text)
    {
        QVERIFY(QDir(folder.path()).mkpath(QStringLiteral(".claude")));
        QFile file(folder.filePath(QStringLiteral(".claude/") + QLatin1StringView(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
};

VESK_TEST(ClaudeSettingsTest)
#include "ClaudeSettingsTest.moc"
