#include "core/ProjectCatalog.h"

#include "base/Files.h"
#include "core/NewProject.h"
#include "support/TestRegistry.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

/** JSON with its quotes written as single ones. */
QByteArray json(QByteArray text)
{
    return text.replace('\'', '"');
}

} // namespace

class ProjectCatalogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_path = m_dir->filePath(u"projects.json"_s);
    }

    void keepsPlacesAndForm()
    {
        ProjectCatalog catalog(m_path);
        QVERIFY(catalog.load()); // no file is no error
        QVERIFY(catalog.upsert({u"나"_s, u"/b"_s, {{u"K"_s, u"v"_s}}, u"#ff0000"_s}));
        QVERIFY(catalog.upsert({u"a"_s, u"/a"_s, {}, {}}));
        QVERIFY(catalog.upsert({u"나"_s, u"/b2"_s, {}, {}}));
        const QByteArray expected = json("[\n"
                                         "    {\n"
                                         "        'alias': '나',\n"
                                         "        'extraEnv': {\n"
                                         "        },\n"
                                         "        'path': '/b2'\n"
                                         "    },\n"
                                         "    {\n"
                                         "        'alias': 'a',\n"
                                         "        'extraEnv': {\n"
                                         "        },\n"
                                         "        'path': '/a'\n"
                                         "    }\n"
                                         "]\n");
        QCOMPARE(readFile(m_path, 1000).value(), expected);
        QCOMPARE(QFile::permissions(m_path) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());

        ProjectCatalog again(m_path);
        QVERIFY(again.load());
        QCOMPARE(again.entries(), catalog.entries());
        QCOMPARE(again.entry(u"a"_s)->path, u"/a"_s);
        QVERIFY(!again.entry(u"A"_s));
        QVERIFY(writeAtomically(m_path, "[]"));
        QVERIFY(again.remove(u"unknown"_s)); // writes all the same
        QCOMPARE(readFile(m_path, 1000).value(), expected);
        QVERIFY(again.remove(u"나"_s));
        QCOMPARE(again.entries().size(), 1);
    }

    void failedWriteKeepsTheEntry()
    {
        ProjectCatalog catalog(m_dir->filePath(u"none/projects.json"_s));
        const auto result = catalog.upsert({u"a"_s, u"/a"_s, {}, {}});
        QCOMPARE(result.error().kind, ErrorKind::Unwritable);
        QCOMPARE(catalog.entries().size(), 1);
    }

    void oneBadEntryFailsTheWhole_data()
    {
        QTest::addColumn<QByteArray>("second");
        QTest::addColumn<QString>("said"); // empty: fine
        QTest::newRow("complete") << QByteArray(
            json("{'alias':'b','path':'/b','extraEnv':{'K':'v'},'colorHex':'#123'}"))
                                  << QString();
        QTest::newRow("null colour, unknown key")
            << json("{'alias':'b','path':'/b','extraEnv':{},'colorHex':null,'x':1}") << QString();
        QTest::newRow("no alias") << json("{'path':'/b','extraEnv':{}}")
                                  << u"entry 2: \"alias\" is missing"_s;
        QTest::newRow("no path") << json("{'alias':'b','extraEnv':{}}") << u"entry 2: \"path\" is missing"_s;
        QTest::newRow("no extraEnv") << json("{'alias':'b','path':'/b'}")
                                     << u"entry 2: \"extraEnv\" is missing"_s;
        QTest::newRow("path type") << json("{'alias':'b','path':null,'extraEnv':{}}")
                                   << u"entry 2: \"path\" is not a string"_s;
        QTest::newRow("extraEnv type")
            << json("{'alias':'b','path':'/b','extraEnv':[]}") << u"entry 2: \"extraEnv\" is not an object"_s;
        QTest::newRow("extraEnv value") << json("{'alias':'b','path':'/b','extraEnv':{'K':1}}")
                                        << u"entry 2: \"extraEnv.K\" is not a string"_s;
        QTest::newRow("colour type") << json("{'alias':'b','path':'/b','extraEnv':{},'colorHex':3}")
                                     << u"entry 2: \"colorHex\" is not a string"_s;
        QTest::newRow("no object") << QByteArray("7") << u"entry 2: not an object"_s;
        QTest::newRow("no JSON") << QByteArray("{") << u"projects.json: "_s;
    }
    void oneBadEntryFailsTheWhole()
    {
        QFETCH(const QByteArray, second);
        QFETCH(const QString, said);
        const QByteArray file = json("[{'alias':'a','path':'/a','extraEnv':{}},") + second + ']';
        QVERIFY(writeAtomically(m_path, file));
        ProjectCatalog catalog(m_path);
        const auto loaded = catalog.load();
        QCOMPARE(loaded.has_value(), said.isEmpty());
        QCOMPARE(catalog.entries().size(), said.isEmpty() ? 2 : 0);
        if (!loaded) {
            QCOMPARE(loaded.error().kind, ErrorKind::Malformed);
            QVERIFY2(loaded.error().text.contains(said), qUtf8Printable(loaded.error().text));
        }
        QCOMPARE(readFile(m_path, 1000).value(), file);
    }

    void aliases()
    {
        QCOMPARE(NewProject::proposeAlias(u"/home/u/my app/"_s, {}), u"my app"_s);
        QCOMPARE(NewProject::proposeAlias(u"/p/vesk"_s, {u"vesk"_s, u"vesk-2"_s}), u"vesk-3"_s);
        QCOMPARE(NewProject::proposeAlias(u"/p/ a\tb\n "_s, {}), u"ab"_s);
        QCOMPARE(NewProject::proposeAlias(u"/"_s, {}), u"project"_s);
        QVERIFY(!NewProject::validateAlias(u"새 앱"_s, {u"vesk"_s}));
        QCOMPARE(NewProject::validateAlias(u" \t"_s, {}), u"별칭을 입력하세요"_s);
        QCOMPARE(NewProject::validateAlias(u"vesk"_s, {u"vesk"_s}), u"이미 쓰는 별칭입니다"_s);
        for (const QString &bad : {u"a\nb"_s, u"a\tb"_s, u"a\u2028b"_s, u"a "_s})
            QVERIFY(NewProject::validateAlias(bad, {}));
    }

    void folders()
    {
        QVERIFY(!NewProject::validateFolder(m_dir->path()));
        QVERIFY(writeAtomically(m_path, "[]"));
        QCOMPARE(NewProject::validateFolder(m_path), u"폴더가 아닙니다"_s);
        QCOMPARE(NewProject::validateFolder(m_dir->filePath(u"none"_s)), u"폴더가 없습니다"_s);
        QVERIFY(NewProject::validateFolder(u"relative"_s));
        QVERIFY(NewProject::validateFolder({}));
    }

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_path;
};

VESK_TEST(ProjectCatalogTest)

#include "ProjectCatalogTest.moc"
