#include "issues/IssueTemplate.h"

#include "issues/IssueScaffold.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

IssueDocument issueOf(const QString &text)
{
    return IssueDocument::parse(text, u"A-1-x.md"_s);
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void put(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

class IssueTemplateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsTheFence_data()
    {
        QTest::addColumn<QString>("readme");
        QTest::addColumn<QString>("found"); // "-": none
        QTest::newRow("the first that has both")
            << u"# A\n| a | b |\n```\n# only a title\n```\n```md\n # T\n\n| a | b |\n```\n```\n# U\n| c | d |\n```"_s
            << u" # T\n\n| a | b |"_s;
        QTest::newRow("without a table") << u"```\n# T\n```\n| a | b |"_s << u"-"_s;
        QTest::newRow("three columns") << u"```\n# T\n| a | b | c |\n```"_s << u"-"_s;
        QTest::newRow("never closed") << u"```\n# T\n| a | b |\n"_s << u"-"_s;
        QTest::newRow("lines of another system")
            << u"```\r\n# T\r\n| a | b |\r\n```\r\n"_s << u"# T\n| a | b |"_s;
    }
    void findsTheFence()
    {
        QFETCH(QString, readme);
        QTEST(IssueTemplate::templateFence(readme).value_or(u"-"_s), "found");
    }

    void learnsWhatHalfOfTheIssuesHave()
    {
        const QList<IssueDocument> issues {
            issueOf(
                u"# A-1 · a\n| 항목 | 값 |\n|---|---|\n| Status | `done` |\n| 영역 | x |\n| 영역 | y |\n## 배경\n## 할 일"_s),
            issueOf(
                u"# A-2 · b\n| 항목 | 값 |\n|---|---|\n| 우선순위 | P1 |\n| Status | todo |\n## 할 일\n## 메모"_s),
            issueOf(
                u"# A-3 · c\n| 항목 | 값 |\n|---|---|\n| Status | todo |\n| 우선순위 | P2 |\n| 영역 | z |"_s),
            issueOf(u"# A-4 · no table\n## 할 일\n## 메모"_s),
        };
        QCOMPARE(
            IssueTemplate::learn(issues).value_or(QString()),
            u"# ID · 제목\n\n| 항목 | 값 |\n|---|---|\n| Status | `todo` |\n| 영역 | — |\n| 우선순위 | — |\n\n"
            "## 할 일\n\n\n## 메모\n"_s);
        QVERIFY(!IssueTemplate::learn({issues.last()}));
        QVERIFY(!IssueTemplate::learn({}));
    }

    void prefersTheOwnRules()
    {
        const QString rules = u"```\n# T\n| a | b |\n```"_s;
        const IssueDocument issue = issueOf(u"# A-1\n|---|---|\n| 상태 | todo |"_s);
        QCOMPARE(IssueTemplate::resolve(rules, {issue}, u"A"_s).origin, IssueTemplate::Origin::Readme);
        QCOMPARE(IssueTemplate::resolve(u"no fence"_s, {issue}, u"A"_s).origin,
                 IssueTemplate::Origin::Existing);
        const auto builtin = IssueTemplate::resolve(std::nullopt, {}, u"ABC"_s);
        QCOMPARE(builtin.origin, IssueTemplate::Origin::Builtin);
        const IssueDocument read = issueOf(builtin.markdown);
        QVERIFY(read.id.startsWith(u"ABC-"_s));
        QCOMPARE(read.status(), u"todo"_s);
        QCOMPARE(read.fields.size(), 9);
        QCOMPARE(read.sections.size(), 4);
        QCOMPARE(issueOf(IssueTemplate::resolve(std::nullopt, {}, u"```A"_s).markdown).status(), u"todo"_s);
    }

    void replacesTheTitle_data()
    {
        QTest::addColumn<QString>("markdown");
        QTest::addColumn<QString>("titled");
        QTest::newRow("its own separator") << u"x\n# ID — 제목: y\nz\n# b\n"_s << u"x\n# A-1 — t\nz\n# b\n"_s;
        QTest::newRow("none of its own") << u"# 제목\nz"_s << u"# A-1 · t\nz"_s;
        QTest::newRow("no title") << u"## s: x\nz"_s << u"# A-1 · t\n\n## s: x\nz"_s;
    }
    void replacesTheTitle()
    {
        QFETCH(QString, markdown);
        QTEST(IssueTemplate::replaceHeading(markdown, u"A-1"_s, u"t"_s), "titled");
    }

    void namesFiles()
    {
        QCOMPARE(IssueTemplate::fileName(u"FE-001"_s, u"Login-폼"_s), u"FE-001-login-폼.md"_s);
        QCOMPARE(IssueTemplate::fileName(u"FE-001"_s, QString()), u"FE-001.md"_s);
    }

    void suggestsAKey_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("/home/u/login-server-farm-two/") << u"LSF"_s;
        QTest::newRow("webApp") << u"WA"_s;
        QTest::newRow("HTTPProxy") << u"HTT"_s;
        QTest::newRow("billing2") << u"BIL"_s;
        QTest::newRow("go") << u"GO"_s;
        QTest::newRow("a") << u"ISS"_s;
        QTest::newRow("프로젝트") << u"ISS"_s;
        QTest::newRow("") << u"ISS"_s;
    }
    void suggestsAKey()
    {
        QTEST(IssueScaffold::suggestedKey(QString::fromUtf8(QTest::currentDataTag())), "key");
        QCOMPARE(IssueScaffold::normalizedKey(u" f-e 2é이"_s), u"FE2"_s);
    }

    void makesAFolder()
    {
        const QTemporaryDir project;
        const auto made = IssueScaffold::create(project.path(), u"docs/issues"_s, u"FE"_s, u"결제"_s);
        QVERIFY(made.has_value());
        QCOMPARE(*made, project.filePath(u"docs/issues"_s));
        const QString rules = QString::fromUtf8(bytesOf(*made + u"/README.md"_s));
        QCOMPARE(rules, IssueScaffold::readme(u"FE"_s));
        QVERIFY(rules.contains(u"\nfor f in issues/FE-*.md; do\n  d=$(grep -cE '^- \\[x\\]' \"$f\");"_s));
        QVERIFY(!rules.contains(u"KEY"_s));
        QVERIFY(bytesOf(*made + u"/BOARD.md"_s).contains("**프로젝트** — 결제\n"));
    }

    void leavesWhatIsThere()
    {
        const QTemporaryDir project;
        put(project.filePath(u"Readme.MD"_s), "mine");
        QVERIFY(IssueScaffold::create(project.path(), u"."_s, u"A"_s, u"p"_s).has_value());
        QVERIFY(IssueScaffold::create(project.path(), u"."_s, u"B"_s, u"q"_s).has_value());
        QCOMPARE(QDir(project.path()).entryList(QDir::Files), (QStringList {u"BOARD.md"_s, u"Readme.MD"_s}));
        QCOMPARE(bytesOf(project.filePath(u"Readme.MD"_s)), QByteArray("mine"));
        QVERIFY(bytesOf(project.filePath(u"BOARD.md"_s)).contains("— p\n"));
    }

    void saysWhatFailed()
    {
        const QTemporaryDir project;
        put(project.filePath(u"file"_s), "x");
        const auto blocked = IssueScaffold::create(project.path(), u"file/issues"_s, u"A"_s, u"p"_s);
        QVERIFY(!blocked && blocked.error().startsWith(u"폴더를 만들지 못했습니다: "_s));
        QVERIFY(!IssueScaffold::create(project.path(), u"file"_s, u"A"_s, u"p"_s));
    }
};

VESK_TEST(IssueTemplateTest)
#include "IssueTemplateTest.moc"
