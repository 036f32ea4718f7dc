#include "issues/IssueCells.h"

#include "IssueTexts.h"
#include "support/TestRegistry.h"

#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

class IssueCellsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unwrapsDecoration_data()
    {
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("value");
        QTest::newRow("nested") << u" **`doing`** "_s << u"doing"_s;
        QTest::newRow("struck") << u"~~`A-3`~~"_s << u"A-3"_s;
        QTest::newRow("bold in backticks") << u"`** x **`"_s << u"x"_s;
        QTest::newRow("placeholder in backticks") << u"`—`"_s << QString();
        QTest::newRow("nothing but signs") << u"****"_s << u"****"_s;
        QTest::newRow("two backticks") << u"``"_s << u"``"_s;
        QTest::newRow("one end alone") << u"**x"_s << u"**x"_s;
        QTest::newRow("a newline is no blank") << u"\nx "_s << u"\nx"_s;
    }

    void unwrapsDecoration()
    {
        QFETCH(QString, cell);
        QTEST(IssueCells::normalizeValue(cell), "value");
    }

    void knowsIds_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isId");
        QTest::newRow("dashes in the prefix") << u"FE-BUG-12"_s << true;
        QTest::newRow("Korean") << u"이슈-7"_s << true;
        QTest::newRow("digits of another script") << u"A-१२"_s << true;
        QTest::newRow("digits beyond the first plane") << u"A-𝟏𝟐"_s << true;
        QTest::newRow("letters beyond the first plane") << u"A-𝐀"_s << false;
        QTest::newRow("no prefix") << u"-12"_s << false;
        QTest::newRow("no number") << u"A-"_s << false;
        QTest::newRow("letters behind") << u"A-1b"_s << false;
        QTest::newRow("blank in the prefix") << u"A B-1"_s << false;
    }

    void knowsIds()
    {
        QFETCH(QString, text);
        QTEST(IssueCells::isIDToken(text), "isId");
    }

    void splitsTableLines()
    {
        QCOMPARE(IssueCells::tableCells(u"| a |  | `b` |"_s), QStringList({u"a"_s, QString(), u"`b`"_s}));
        QCOMPARE(IssueCells::tableCells(u"|"_s), QStringList({QString()}));
        QVERIFY(IssueCells::isSeparatorRow(u"|:--|--:|"_s) && IssueCells::isSeparatorRow(u"|-|"_s));
        for (const QString &line : {u"|"_s, u"||"_s, u"|--||"_s, u"|::|"_s, u"|- -|"_s})
            QVERIFY2(!IssueCells::isSeparatorRow(line), qUtf8Printable(line));
    }

    void splitsHeadings_data()
    {
        QTest::addColumn<QString>("heading");
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("title");
        QTest::newRow("mark") << u"`A-1` — x"_s << u"A-1"_s << u"x"_s;
        QTest::newRow("earliest listed mark, first place")
            << u"A-1: y — x · y · z"_s << u"A-1: y — x"_s << u"y · z"_s;
        QTest::newRow("empty side") << u": x — y"_s << u": x"_s << u"y"_s;
        QTest::newRow("word") << u"A-1   긴 제목"_s << u"A-1"_s << u"긴 제목"_s;
        QTest::newRow("id alone") << u"A-1"_s << u"A-1"_s << u"A-1"_s;
        QTest::newRow("no id") << u"제목 뿐"_s << QString() << u"제목 뿐"_s;
    }

    void splitsHeadings()
    {
        QFETCH(QString, heading);
        const auto [id, title] = IssueCells::splitHeading(heading);
        QTEST(id, "id");
        QTEST(title, "title");
    }

    void cutsMilestones_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("name");
        QTest::newRow("decorated") << u" M1 — 로그인 (6월)"_s << u"M1"_s;
        QTest::newRow("an earlier mark of the list wins") << u"M1 (6월) · 끝"_s << u"M1 (6월)"_s;
        QTest::newRow("parenthesis without a blank") << u"M1(6월)"_s << u"M1(6월)"_s;
    }

    void cutsMilestones()
    {
        QFETCH(QString, text);
        QTEST(IssueCells::cutMilestone(text), "name");
    }

    void readsReferences_data()
    {
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("refs"); // struck ones with a "!"
        QTest::newRow("list") << u"~~A-1~~, [A-2](A-2-x.md) · A-3 (대기)"_s << u"!A-1 A-2 A-3"_s;
        QTest::newRow("note behind a struck one") << u"~~A-1~~ (해결됨)"_s << u"!A-1"_s;
        QTest::newRow("backticks around the whole") << u"`A-1, A-2`"_s << u"A-1 A-2"_s;
        QTest::newRow("slash") << u"A-1/`A-2`"_s << u"A-1 A-2"_s;
        QTest::newRow("link of a decorated id") << u"[`A-1`](a/b.md)"_s << u"A-1"_s;
        QTest::newRow("link of another text") << u"[문서](docs/a.md)"_s << u"[문서](docs a.md)"_s;
        QTest::newRow("link in a bracket") << u"[x [A-1](a/b.md)"_s << u"[x_[A-1](a b.md)"_s;
        QTest::newRow("broken link first") << u"[] [A-1](a/b.md)"_s << u"[]_A-1"_s;
        QTest::newRow("title kept") << u"로그인 화면, A-1"_s << u"로그인_화면 A-1"_s;
        QTest::newRow("placeholders") << u"—, -, ` `"_s << QString();
    }

    void readsReferences()
    {
        QFETCH(QString, cell);
        QStringList refs;
        for (const IssueDocument::Ref &ref : IssueCells::refDetails(cell))
            refs.append((ref.struck ? u"!"_s : QString()) + QString(ref.id).replace(u' ', u'_'));
        QTEST(refs.join(u' '), "refs");
    }

    void appendsReferences_data()
    {
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("with");
        QTest::newRow("empty") << u" — "_s << u"`A-1`"_s;
        QTest::newRow("quoted") << u"`B-2` "_s << u"`B-2` · `A-1`"_s;
        QTest::newRow("plain") << u"B-2"_s << u"B-2 · A-1"_s;
        QTest::newRow("there") << u" [a-1](x.md) "_s << u" [a-1](x.md) "_s;
    }

    void appendsReferences()
    {
        QFETCH(QString, cell);
        QTEST(IssueCells::appendingRef(u"A-1"_s, cell), "with");
    }

    void appendedReferenceIsFound()
    {
        QVERIFY(rc::check([] {
            const QString cell = issueText().remove(u'\n').remove(u'|');
            const QString with = IssueCells::appendingRef(u"Z-99"_s, cell);
            RC_ASSERT(IssueCells::refDetails(with).contains({u"Z-99"_s, false}));
            RC_ASSERT(IssueCells::appendingRef(u"z-99"_s, with) == with);
        }));
    }

    void takesStatusCellsApart_data()
    {
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("trailing");
        QTest::addColumn<QString>("rewritten"); // to "done"
        QTest::newRow("quoted") << u"`doing` — 대기"_s << u"doing"_s << u" — 대기"_s << u"`done` — 대기"_s;
        QTest::newRow("quoted own word") << u"`설계`중"_s << u"설계"_s << u"중"_s << u"`done`중"_s;
        QTest::newRow("two words") << u"진행 중"_s << u"진행 중"_s << QString() << u"done"_s;
        QTest::newRow("two words and a note")
            << u"진행 중 (QA)"_s << u"진행 중"_s << u" (QA)"_s << u"done (QA)"_s;
        QTest::newRow("bold and a note") << u"**막힘**  - x"_s << u"막힘"_s << u"  - x"_s << u"done  - x"_s;
        QTest::newRow("word without a mark")
            << u"막힘 디자인 대기"_s << u"막힘 디자인 대기"_s << QString() << u"done"_s;
        QTest::newRow("own word and a note") << u"설계 — x"_s << u"설계 — x"_s << QString() << u"done"_s;
        QTest::newRow("one backtick") << u"`doing (x)"_s << u"`doing (x)"_s << QString() << u"done"_s;
        QTest::newRow("placeholder") << u"—"_s << QString() << QString() << u"done"_s;
    }

    void takesStatusCellsApart()
    {
        QFETCH(QString, cell);
        const auto read = IssueCells::statusCell(cell);
        QTEST(read.word, "word");
        QTEST(read.trailing, "trailing");
        QCOMPARE(read.token + read.trailing, cell);
        QTEST(read.rewritten(u"done"_s), "rewritten");
    }

    // Each is done in no time; work that grows with the square of the size would take minutes.
    void takesHostileCells_data()
    {
        QTest::addColumn<QString>("piece");
        for (const char *piece :
             {"[", "[]", "~~", "`", "**", " -", "` ", "~~ - ", "|", "[A-1](", "A-1,", "\u0301"})
            QTest::newRow(piece) << QString::fromUtf8(piece);
    }

    void takesHostileCells()
    {
        QFETCH(QString, piece);
        const QString cell = piece.repeated(500'000 / piece.size());
        const auto read = IssueCells::statusCell(cell);
        QVERIFY(read.token.size() + read.trailing.size() <= cell.size());
        QVERIFY(IssueCells::normalizeValue(cell).size() <= cell.size());
        QVERIFY(IssueCells::unwrappingIDLinks(cell + "]("_L1).size() <= cell.size() + 2);
        QVERIFY(IssueCells::refDetails(cell).size() <= cell.size());
        QVERIFY(!IssueCells::isSeparatorRow(cell));
        QVERIFY(!IssueCells::splitHeading(cell).second.isNull());
    }
};

VESK_TEST(IssueCellsTest)
#include "IssueCellsTest.moc"
