#include "issues/IssueDocument.h"

#include "issues/IssueCells.h"
#include "IssueTexts.h"
#include "support/TestRegistry.h"

#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

class IssueDocumentTest : public QObject
{
    Q_OBJECT

    static IssueDocument parsed(const char16_t *text)
    {
        return IssueDocument::parse(QString::fromUtf16(text), u"FE-007-x.md"_s);
    }

private Q_SLOTS:
    void readsAFile()
    {
        const IssueDocument document = parsed(uR"(# FE-7 · 로그인
| 항목 | 값 |
|---|---|
| 상태 | `doing` — → 디자인 대기 |
| **선행** | ~~A-1~~, `A-2` |
| 후행 | — |
| a | b | c |
- [x] 위
## 할 일
- [ ] 하나
* [X] 둘
```
- [ ] 울타리 안
## 도
```
| 상태 | `done` |
# 나중
## 빈 것
)");
        QCOMPARE(document.id, u"FE-7"_s);
        QCOMPARE(document.title, u"로그인"_s);
        QCOMPARE(document.fields.size(), 3);
        QCOMPARE(document.fields[1],
                 (IssueDocument::Field {u"선행"_s, u"~~A-1~~, `A-2`"_s, u"~~A-1~~, `A-2`"_s}));
        QCOMPARE(document.sections, QList<IssueDocument::Section>({{u"할 일"_s, {1, 2}}, {u"빈 것"_s, {}}}));
        QCOMPARE(document.progress, (IssueDocument::Progress {2, 3}));
        QVERIFY(document.hasMetaTable);
        QCOMPARE(document.status(), u"doing"_s);
        QCOMPARE(document.statusNote(), u"디자인 대기"_s);
        QCOMPARE(document.blockedBy(), QStringList({u"A-1"_s, u"A-2"_s}));
        QCOMPARE(document.key({u"BLOCKS"_s, u"후행"_s}), u"후행"_s);
        QCOMPARE(document.value(IssueKeys::blocks()), std::nullopt);
        QCOMPARE(document.rawValue(IssueKeys::blocks()), u"—"_s);
    }

    void namesByFile_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("title");
        QTest::newRow("empty") << QString() << u"FE-007-x.md"_s << u"FE-007"_s << u"FE-007-x"_s;
        QTest::newRow("no number") << QString() << u"설계.노트.md"_s << u"설계.노트"_s << u"설계.노트"_s;
        QTest::newRow("title alone") << u"# 제목 뿐"_s << u"A-1.md"_s << u"A-1"_s << u"제목 뿐"_s;
        QTest::newRow("title below a section") << u"## x\n# B-2"_s << u"A-1"_s << u"B-2"_s << u"B-2"_s;
        QTest::newRow("title in a fence") << u"```\n# B-2"_s << u"A-1"_s << u"A-1"_s << u"A-1"_s;
    }

    void namesByFile()
    {
        QFETCH(QString, text);
        QFETCH(QString, fileName);
        const IssueDocument document = IssueDocument::parse(text, fileName);
        QTEST(document.id, "id");
        QTEST(document.title, "title");
    }

    void findsTheTable()
    {
        QCOMPARE(parsed(u"| 항목 | 값 |\n| 상태 | todo |").fields.size(), 2); // no row of dashes: no header
        QCOMPARE(parsed(u"| 상태 | todo |\n| status | done |").status(), u"todo"_s);
        QVERIFY(parsed(u"|a|b|c|").hasMetaTable && parsed(u"|a|b|c|").fields.isEmpty());
        for (const char16_t *none : {u"```\n| 상태 | todo |\n```", u"## x\n| 상태 | todo |"})
            QVERIFY(!parsed(none).hasMetaTable && parsed(none).fields.isEmpty());
        QCOMPARE(parsed(u"| 상태 | 진행 중 (QA) |").statusNote(), u"(QA)"_s);
    }

    void setsFields_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("verbatim");
        QTest::addColumn<QString>("result");
        const auto row = [](const char *name, const char16_t *text, const char16_t *value, bool verbatim,
                            const char16_t *result) {
            QTest::newRow(name) << QString::fromUtf16(text) << QString::fromUtf16(value) << verbatim
                                << QString::fromUtf16(result);
        };
        row("backticks kept", u"x\n  |상태|`a`| \ny\n", u"b", false, u"x\n  | 상태 | `b` |\ny\n");
        row("bold kept", u"| **상태** | **a** |", u"b", false, u"| **상태** | **b** |");
        row("verbatim", u"| 상태 | `a` |", u"b (x)", true, u"| 상태 | b (x) |");
        row("emptied", u"| 상태 | `a` |", u"", false, u"| 상태 | — |");
        row("first of two", u"|상태|a|\n|상태|b|", u"c", false, u"| 상태 | c |\n|상태|b|");
        row("added, plain", u"\n\t| a | b |\n|x|y|z|\n\n## s", u"c", false,
            u"\n\t| a | b |\n|x|y|z|\n| 상태 | c |\n\n## s");
        row("added, in backticks", u"| a | `b` |", u"c", true, u"| a | `b` |\n| 상태 | `c` |");
        row("added, empty", u"| a | `b` |", u"", false, u"| a | `b` |\n| 상태 | — |");
        row("CR kept", u"| a | b |\r\n| 상태 | b |\r\n", u"c", false, u"| a | b |\r\n| 상태 | c |\r\n");
        row("CR given", u"| a | b |\r\nx\r\n", u"c", false, u"| a | b |\r\n| 상태 | c |\r\nx\r\n");
        row("stays one cell", u"| 상태 | b |", u"c|d\ne", false, u"| 상태 | c｜d e |");
        row("fenced table", u"```\n| 상태 | a |\n```\n", u"c", false, nullptr);
        row("table below a section", u"## s\n| 상태 | a |\n", u"c", false, nullptr);
    }

    void setsFields()
    {
        QFETCH(QString, text);
        QFETCH(QString, value);
        QFETCH(bool, verbatim);
        QFETCH(QString, result);
        const auto written = IssueCells::setField(text, u"상태"_s, value, verbatim);
        QCOMPARE(written.has_value(), !result.isEmpty());
        QCOMPARE(written.value_or(QString()), result);
    }

    void settingAFieldLeavesTheRestAlone()
    {
        QVERIFY(rc::check([] {
            const QString text = issueText();
            const QString value = *rc::gen::element(u"새값"_s, u"a — b"_s, QString());
            const auto written = IssueCells::setField(text, u"상태"_s, value, *rc::gen::arbitrary<bool>());
            RC_ASSERT(written.has_value() == IssueDocument::parse(text, {}).hasMetaTable);
            if (!written)
                return;
            const QStringList before = text.split(u'\n');
            const QStringList after = written->split(u'\n');
            qsizetype same = 0;
            while (same < before.size() && before[same] == after[same])
                ++same;
            const qsizetype grown = after.size() - before.size();
            RC_ASSERT(grown == 0 || grown == 1);
            RC_ASSERT(before.mid(same + 1 - grown) == after.mid(same + 1));
            // A header is a row to the writer, which writes to it, and none to the reader.
            if (!text.contains("|-"_L1))
                RC_ASSERT(IssueDocument::parse(*written, {}).value({u"상태"_s}).value_or(QString()) == value);
        }));
    }
};

VESK_TEST(IssueDocumentTest)
#include "IssueDocumentTest.moc"
