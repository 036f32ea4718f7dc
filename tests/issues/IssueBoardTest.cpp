#include "issues/IssueBoard.h"

#include "issues/IssueBoardSync.h"
#include "IssueTexts.h"
#include "support/TestRegistry.h"

#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;
using IssueBoardSync::Scope;

class IssueBoardTest : public QObject
{
    Q_OBJECT

    static IssueBoardSync::Entry entry(const QString &id, const QString &status,
                                       const QString &milestone = {})
    {
        return {.id = id,
                .title = u"새 이슈"_s,
                .status = status,
                .milestone = milestone,
                .fileName = id + u".md"_s};
    }

    // The board with one row whose status is `cell`, planned with that one issue at `status`.
    static QString statusPlanned(const QString &cell, const QString &status)
    {
        const QString board = u"| ID | 상태 |\n|---|---|\n| A-1 | %1 |"_s;
        const auto plan = IssueBoardSync::plan(board.arg(cell), {entry(u"A-1"_s, status)}, Scope::Full);
        return plan.markdown.split(u'\n').last().section(u'|', 2, 2).mid(1).chopped(1);
    }

private Q_SLOTS:
    void readsABoard()
    {
        const IssueBoard::Board board = IssueBoard::parse(uR"(
| 번호 | 요약 | 상태 |
|---|---|---|
| A-0 | — | `doing` — x |
## M1 — 로그인 (6월)
| ID | 이름 | 우선순위 (P0~P2) | 영역 | 규모 | State |
|:--|---|---|---|---|---|
| [`A-1`](a (1).md) | [**제목**](x.md) | P0 | — | 2일 | **진행 중 (QA)** |
| 합계 | | | | | 3 |
```
| A-7 | x |
```
글
| A-8 | no header any more | x |
## M2
| 무엇 | 어떻게 |
|---|---|
| A-2 | 둘째 |
| A-3 |
## M1 — 로그인 (6월)
)"_s);
        QCOMPARE(board.milestoneOrder, QStringList({u"M1 — 로그인 (6월)"_s, u"M2"_s}));
        const QList<IssueBoard::Row> rows {
            {.id = u"A-0"_s, .title = u"A-0"_s, .status = u"doing"_s},
            {.id = u"A-1"_s,
             .title = u"제목"_s,
             .link = u"a (1).md"_s,
             .milestone = u"M1 — 로그인 (6월)"_s,
             .priority = u"P0"_s,
             .estimate = u"2일"_s,
             .status = u"진행 중"_s},
            {.id = u"A-2"_s, .title = u"둘째"_s, .milestone = u"M2"_s},
            {.id = u"A-3"_s, .title = u"A-3"_s, .milestone = u"M2"_s},
        };
        QCOMPARE(board.rows.size(), rows.size());
        for (qsizetype i = 0; i < rows.size(); ++i)
            QVERIFY2(board.rows[i] == rows[i], qUtf8Printable(rows[i].id));
    }

    void splitsLinks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("target");
        QTest::newRow("link") << u" [ a ]( b(1).md )"_s << u"a"_s << u"b(1).md"_s;
        QTest::newRow("empty") << u"[]()"_s << u""_s << u""_s;
        QTest::newRow("text behind") << u"[a](b) c"_s << u"[a](b) c"_s << QString();
        QTest::newRow("no target") << u"[a])"_s << u"[a])"_s << QString();
    }

    void splitsLinks()
    {
        QFETCH(QString, text);
        QFETCH(QString, target);
        const auto [name, read] = IssueBoard::splitLink(text);
        QTEST(name, "name");
        QCOMPARE(read.has_value(), !target.isNull());
        QCOMPARE(read.value_or(QString()), target);
    }

    void plansStatusCells_data()
    {
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("planned");
        QTest::newRow("plain") << u"doing"_s << u"done"_s << u"done"_s;
        QTest::newRow("quoted, with a note") << u"`doing` → x"_s << u"done"_s << u"`done` → x"_s;
        QTest::newRow("case alone") << u"Doing"_s << u"doing"_s << u"Doing"_s;
        QTest::newRow("blanked") << u"doing"_s << QString() << QString();
        QTest::newRow("blanked in backticks") << u"`doing`"_s << QString() << u"``"_s;
        QTest::newRow("blank already") << u"``"_s << QString() << u"``"_s;
        QTest::newRow("placeholder") << u"—"_s << u"done"_s << u"done"_s;
        QTest::newRow("own word beside a note") << u"doing — x"_s << u"설계"_s << u"`설계` — x"_s;
        QTest::newRow("word with a backtick") << u"`doing`"_s << u"a`b"_s << u"a`b"_s;
    }

    void plansStatusCells()
    {
        QFETCH(QString, cell);
        QFETCH(QString, status);
        QTEST(statusPlanned(cell, status), "planned");
    }

    void plansABoard()
    {
        const QString board = uR"(| 상태 | 개수 |
|---|---|
| `진행` | **1** |
| done | 7 |

| ID | 제목 | 상태 |
|---|---|---|
| Z-9 | 파일 없음 | 아무말 |
## M1 · 1차 (6월)
| ID | 상태 | 메모 |
|---|---|---|
| a-1 |  todo  | 그대로
## M2
| ID | 상태 |
|---|---|
## M1 (다시)

  | 제목 | 상태 | 이슈 | P |
  |---|---|---|---|
  | 옛 제목 | `done` | [B-2](b.md) | P1 |
산문
```
| B-2 | x |
```
)"_s.replace(u'\n', u"\r\n"_s);
        auto priority = entry(u"D-4"_s, u"검토"_s, u"M1 — 아무"_s);
        priority.priority = u"P2"_s;
        const QList<IssueBoardSync::Entry> entries {
            entry(u"A-1"_s, u"doing"_s, u"M1"_s), entry(u"B-2"_s, u"done"_s),
            entry(u"C-3"_s, {}, u"M1 (x)"_s),     priority,
            entry(u"E-5"_s, u"done"_s, u"M2"_s),  entry(u"F-6"_s, u"doing"_s),
            entry(u"c-3"_s, u"done"_s, u"M1"_s),  entry(u"설계"_s, u"done"_s, u"M1"_s),
        };
        QString expected = board;
        expected.replace(u"**1**"_s, u"2"_s).replace(u"| done | 7 |"_s, u"| done | 4 |"_s);
        expected.replace(u"| a-1 |  todo  | 그대로"_s, u"| a-1 | doing | 그대로 |"_s);
        expected.replace(u"| Z-9 | 파일 없음 | 아무말 |\r\n"_s,
                         u"| Z-9 | 파일 없음 | 아무말 |\r\n| [F-6](F-6.md) | 새 이슈 | `doing` |\r\n"_s);
        expected.replace(u"| P1 |\r\n"_s,
                         u"| P1 |\r\n  | 새 이슈 | `검토` | [D-4](D-4.md) | P2 |\r\n"
                         "  | 새 이슈 | `` | [C-3](C-3.md) | — |\r\n"_s);

        const auto plan = IssueBoardSync::plan(board, entries, Scope::Full);
        QCOMPARE(plan.markdown, expected);
        QCOMPARE(plan.statusChanges,
                 QList<IssueBoardSync::StatusChange>({{u"a-1"_s, u"todo"_s, u"doing"_s}}));
        QCOMPARE(
            plan.summaryChanges,
            QList<IssueBoardSync::SummaryChange>({{u"진행"_s, u"1"_s, u"2"_s}, {u"done"_s, u"7"_s, u"4"_s}}));
        QCOMPARE(plan.added, QStringList({u"C-3"_s, u"D-4"_s, u"F-6"_s}));
        QCOMPARE(plan.unplaced, QStringList({u"E-5"_s, u"설계"_s})); // no row to follow; no id to be found by
        QCOMPARE(plan.untouchedBacklog, QStringList({u"Z-9"_s}));
        QVERIFY(plan.deferredRows.isEmpty());

        const auto statuses = IssueBoardSync::plan(board, entries, Scope::StatusesOnly);
        QCOMPARE(statuses.deferredRows, QStringList({u"C-3"_s, u"D-4"_s, u"E-5"_s, u"F-6"_s, u"설계"_s}));
        QCOMPARE(statuses.markdown.count(u'\n'), board.count(u'\n'));
        QCOMPARE(statuses.statusChanges, plan.statusChanges);
    }

    void makesRows()
    {
        auto issue = entry(u"A-1"_s, u"done"_s);
        issue.title = u"a|b"_s;
        issue.area = u"화면"_s;
        QCOMPARE(
            IssueBoardSync::row(issue, {u"**ID**"_s, u"Title"_s, u"분야"_s, u"p"_s, u"상태"_s, u"메모"_s}),
            u"| [A-1](A-1.md) | a｜b | 화면 | — | `done` | — |"_s);
        QCOMPARE(IssueBoardSync::row(issue, {u"#"_s, u"상태"_s}), u"| [A-1](A-1.md) | `done` |"_s);
    }

    void aPlanOnItsOwnTextPlansNothing()
    {
        QVERIFY(rc::check([] {
            const QString board = issueText();
            QList<IssueBoardSync::Entry> entries;
            const int count = *rc::gen::inRange(0, 6);
            for (int i = 0; i < count; ++i) {
                const QString name = u"A-%1-x.md"_s.arg(i);
                entries.append(IssueBoardSync::entry(IssueDocument::parse(issueText(), name), name));
            }
            const auto scope = *rc::gen::element(Scope::Full, Scope::StatusesOnly);
            const auto plan = IssueBoardSync::plan(board, entries, scope);
            RC_ASSERT(plan.changesAnything() == (plan.markdown != board));
            const auto again = IssueBoardSync::plan(plan.markdown, entries, scope);
            RC_ASSERT(!again.changesAnything());
            RC_ASSERT(again.unplaced == plan.unplaced && again.deferredRows == plan.deferredRows);
            RC_ASSERT(plan.markdown.count(u'\n') == board.count(u'\n') + plan.added.size());
        }));
    }

    void takesAManyRowedBoard()
    {
        QString board = u"## M1\n| ID | 상태 |\n|---|---|\n"_s;
        for (int i = 0; i < 10'000; ++i)
            board += u"| A-%1 | `todo` |\n"_s.arg(i);
        QList<IssueBoardSync::Entry> entries;
        for (int i = 7'500; i < 12'500; ++i)
            entries.append(entry(u"a-%1"_s.arg(i), u"done"_s, u"M1"_s));
        const auto plan = IssueBoardSync::plan(board, entries, Scope::Full);
        QCOMPARE(plan.statusChanges.size(), 2'500);
        QCOMPARE(plan.added.size(), 2'500);
        QCOMPARE(IssueBoard::parse(plan.markdown).rows.size(), 12'500);
    }
};

VESK_TEST(IssueBoardTest)
#include "IssueBoardTest.moc"
