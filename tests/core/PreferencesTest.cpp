#include "core/Preferences.h"

#include "base/Files.h"
#include "core/UserDefaultsMigration.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

class PreferencesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_path = m_dir->filePath(u"vesk/preferences.ini"_s);
    }

    void valuesOutliveTheProgram()
    {
        const QString odd = u"orvane.issues.folder.팀/a\\b%2F c"_s;
        {
            Preferences preferences(m_path);
            QCOMPARE(preferences.answerLanguage(), AnswerLanguage::Auto);
            QVERIFY(!preferences.keepAwake());
            QVERIFY(!preferences.windowGeometry());
            QSignalSpy changes(&preferences, &Preferences::changed);
            preferences.setAnswerLanguage(AnswerLanguage::Japanese);
            preferences.setKeepAwake(true);
            preferences.setKeepAwake(true);
            preferences.setTextSize(300);
            preferences.setTheme(ThemeChoice::Dark);
            preferences.setWindowGeometry({-10, 20, 900, 600});
            preferences.setSidebarWidth(312.5);
            preferences.setBackgroundWidth(5000);
            preferences.setValue(odd, u"@문서, \"x\"; 1%"_s);
            preferences.setValue(u"gone"_s, 1);
            preferences.setValue(u"gone"_s, {});
            QCOMPARE(changes.count(), 10);
            QCOMPARE(changes.at(1).first().toString(), u"orvane.keepAwake"_s);
        }
        Preferences preferences(m_path);
        QVERIFY(preferences.fileProblem().isEmpty());
        QCOMPARE(preferences.answerLanguage(), AnswerLanguage::Japanese);
        QVERIFY(preferences.keepAwake());
        QCOMPARE(preferences.textSize(), 160);
        QCOMPARE(preferences.theme(), ThemeChoice::Dark);
        QCOMPARE(preferences.windowGeometry(), QRect(-10, 20, 900, 600));
        QCOMPARE(preferences.sidebarWidth(), 312.5);
        QCOMPARE(preferences.backgroundWidth(), 800.0);
        QCOMPARE(preferences.stringValue(odd), u"@문서, \"x\"; 1%"_s);
        QVERIFY(!preferences.contains(u"gone"_s));
        QSignalSpy changes(&preferences, &Preferences::changed);
        preferences.setKeepAwake(true); // as the file has it
        QCOMPARE(changes.count(), 0);
    }

    void wrongTypesReadAsDefaults()
    {
        write(m_path,
              "[General]\norvane.answerLanguage=klingon\norvane.keepAwake=maybe\nvesk.window.textSize=big\n"
              "vesk.window.theme=7\nvesk.window.geometry=@Rect(1)\nvesk.window.sidebarWidth=nan\n");
        const Preferences preferences(m_path);
        QCOMPARE(preferences.answerLanguage(), AnswerLanguage::Auto);
        QCOMPARE(preferences.boolValue(u"orvane.keepAwake"_s, true), true);
        QCOMPARE(preferences.textSize(), 100);
        QCOMPARE(preferences.theme(), ThemeChoice::System);
        QVERIFY(!preferences.windowGeometry());
        QCOMPARE(preferences.sidebarWidth(), 256.0);
    }

    void brokenFileIsKeptAside()
    {
        const QByteArray broken = "[General]\norvane.keepAwake=true\n\x01\xff no ini at all\n[half";
        write(m_path, broken);
        {
            Preferences preferences(m_path);
            QVERIFY(preferences.keepAwake());
            QVERIFY(!preferences.fileProblem().isEmpty());
            preferences.setTextSize(120);
        }
        QCOMPARE(readFile(m_path + u".broken"_s, 1000).value(), broken);
        const Preferences again(m_path);
        QVERIFY(again.fileProblem().isEmpty());
        QVERIFY(again.keepAwake());
        QCOMPARE(again.textSize(), 120);
    }

    void folderInItsPlaceIsLeftAlone()
    {
        QVERIFY(QDir().mkpath(m_path));
        {
            Preferences preferences(m_path);
            QVERIFY(!preferences.fileProblem().isEmpty());
            preferences.setKeepAwake(true);
            preferences.sync();
            QVERIFY(preferences.keepAwake());
        }
        QVERIFY(QFileInfo(m_path).isDir());
    }

    void olderDomainIsTakenOverOnce()
    {
        const QString older = m_dir->filePath(u"dev.orvane.plist"_s);
        const QByteArray list =
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<!DOCTYPE plist PUBLIC \"-//X//DTD PLIST 1.0//EN\" \"http://localhost/none.dtd\">\n"
            "<plist version=\"1.0\"><dict>\n"
            "  <key>orvane.answerLanguage</key><string>korean</string>\n"
            "  <key>orvane.keepAwake</key><true/>\n"
            "  <key>orvane.rateLimit.expanded</key><false/>\n"
            "  <key>orvane.issues.listWidth</key><real>400.5</real>\n"
            "  <key>count</key><integer> 12 </integer>\n"
            "  <key>a &amp; b</key><string/>\n"
            "  <key>frame</key><array><string>skipped</string><dict><key>k</key><true/></dict></array>\n"
            "  <key>blob</key><data>AAAA</data>\n"
            "  <key>bad</key><integer>twelve</integer>\n"
            "</dict></plist>\n";
        write(older, list);
        {
            Preferences preferences(m_path);
            preferences.setAnswerLanguage(AnswerLanguage::English);
            UserDefaultsMigration::runOnce(preferences, older);
        }
        Preferences preferences(m_path);
        QCOMPARE(preferences.answerLanguage(), AnswerLanguage::English);
        QVERIFY(preferences.keepAwake());
        QVERIFY(!preferences.boolValue(u"orvane.rateLimit.expanded"_s, true));
        QCOMPARE(preferences.doubleValue(u"orvane.issues.listWidth"_s), 400.5);
        QCOMPARE(preferences.doubleValue(u"count"_s), 12.0);
        QVERIFY(preferences.contains(u"a & b"_s));
        for (const QString &skipped : {u"frame"_s, u"k"_s, u"blob"_s, u"bad"_s})
            QVERIFY(!preferences.contains(skipped));

        preferences.setValue(u"count"_s, {});
        UserDefaultsMigration::runOnce(preferences, older);
        QVERIFY(!preferences.contains(u"count"_s));
    }

    void unreadableOlderDomainIsNotTriedAgain_data()
    {
        QTest::addColumn<QByteArray>("list");
        QTest::newRow("missing") << QByteArray();
        QTest::newRow("binary") << QByteArray("bplist00\xd1\x01\x02", 11);
        QTest::newRow("cut") << QByteArray("<plist><dict><key>a</key><string>b</string><key>c");
        QTest::newRow("no dictionary") << QByteArray("<plist><array/></plist>");
    }
    void unreadableOlderDomainIsNotTriedAgain()
    {
        QFETCH(const QByteArray, list);
        const QString older = m_dir->filePath(u"dev.orvane.plist"_s);
        if (!list.isEmpty())
            write(older, list);
        Preferences preferences(m_path);
        UserDefaultsMigration::runOnce(preferences, older);
        QVERIFY(preferences.boolValue(u"vesk.migratedUserDefaultsFromOrvane"_s));
        write(older, "<plist><dict><key>a</key><string>b</string></dict></plist>");
        UserDefaultsMigration::runOnce(preferences, older);
        QVERIFY(!preferences.contains(u"a"_s));
    }

private:
    static void write(const QString &path, const QByteArray &bytes)
    {
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QVERIFY(writeAtomically(path, bytes));
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_path;
};

VESK_TEST(PreferencesTest)

#include "PreferencesTest.moc"
