// The kanban of an issue window without a window.
#include "sessions/ProjectChat.h"
#include "support/TestRegistry.h"
#include "ui/IssueFolderStage.h"
#include "ui/issues/IssueKanbanModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;
using Test::IssueFolderStage;

namespace
{

struct KanbanStageSet {
    KanbanStageSet()
    {
        folder.put(u"A-1"_s, u"하나"_s,
                   {u"상태 | todo"_s, u"영역 | web"_s, u"추정 | 2d"_s, u"우선순위 | P1"_s},
                   u"- [x] a\n- [ ] b\n"_s);
        folder.put(u"A-2"_s, u"둘"_s, {u"상태 | doing"_s, u"영역 | web"_s});
        folder.put(u"A-10"_s, u"열"_s, {u"상태 | todo"_s});
        folder.put(u"A-3"_s, u"셋"_s, {u"상태 | `보류` — 외부 답변"_s});
        folder.put(u"A-4"_s, u"넷"_s, {u"영역 | web"_s});
        folder.put(u"A-5"_s, u"다섯"_s, {u"상태 | todo"_s, u"선행 | A-6"_s});
        folder.put(u"A-6"_s, u"여섯"_s, {u"상태 | todo"_s});
        folder.putBoard(
            u"## M1\n| ID | 제목 | 우선순위 | 상태 |\n|---|---|---|---|\n| A-9 | 아홉 | P2 | todo |\n"_s);
        folder.look();
        model.setView(folder.view.get());
    }
    /** "todo A-1 A-9 A-10|doing A-2". */
    [[nodiscard]] QString shown() const
    {
        QStringList columns;
        for (int column = 0; column < model.rowCount(); ++column) {
            QStringList words {model.index(column).data().toString()};
            for (const auto &card : cardsOf(column)->cards()) {
                words.append(card.id);
            }
            columns.append(words.join(u' '));
        }
        return columns.join(u'|');
    }
    [[nodiscard]] IssueKanbanCards *cardsOf(int column) const
    {
        return model.index(column).data(IssueKanbanModel::CardsRole).value<IssueKanbanCards *>();
    }
    [[nodiscard]] QStringList chips()
    {
        QStringList chips;
        for (const auto &row : model.chips()->rows()) {
            chips.append((row.status ? row.status->written() : u"*"_s)
                         + (row.vacant ? u"-"_s : QString::number(row.count))
                         + (row.chosen ? u"!"_s : u""_s));
        }
        return chips;
    }

    IssueFolderStage folder;
    IssueKanbanModel model;
    QAbstractItemModelTester tester {&model, QAbstractItemModelTester::FailureReportingMode::QtTest};
    QAbstractItemModelTester chipTester {model.chips(),
                                         QAbstractItemModelTester::FailureReportingMode::QtTest};
};

} // namespace

class KanbanModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsWhatHasNoRelations()
    {
        KanbanStageSet set;
        const QAbstractItemModelTester cards(set.cardsOf(0),
                                             QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(set.shown(), u"todo A-1 A-9 A-10|doing A-2|보류 A-3|상태 없음 A-4"_s);
        QCOMPARE(set.chips(),
                 (QStringList {u"*6!"_s, u"todo3"_s, u"doing1"_s, u"보류1"_s, u"1"_s, u"blocked-"_s,
                               u"review-"_s, u"done-"_s, u"cancelled-"_s}));
        QCOMPARE(set.model.relatedText(),
                 u"선행·후행이 없는 이슈만 보입니다 — 관계 있는 2건은 의존관계에 있습니다"_s);
        const auto &todo = set.cardsOf(0)->cards();
        QCOMPARE(todo[0].meta, u"web · 2d"_s);
        QCOMPARE(todo[0].progress, (IssueDocument::Progress {1, 2}));
        QCOMPARE(todo[1].priority, u"P2"_s);
        QVERIFY(set.cardsOf(2)->cards()[0].meta.contains(u"외부 답변"_s));

        set.folder.view->setQuery(u"web"_s);
        QCOMPARE(set.shown(), u"todo A-1|doing A-2|보류|상태 없음 A-4"_s);
        set.model.filterBy(1);
        QCOMPARE(set.shown(), u"todo A-1"_s);
        set.folder.view->setQuery({});
        QCOMPARE(set.shown(), u"todo A-1 A-9 A-10"_s);
        set.model.filterBy(1);
        QCOMPARE(set.model.rowCount(), 4);
    }

    void keysGoAmongTheCards()
    {
        const QList<QStringList> columns {{u"a"_s, u"b"_s, u"c"_s}, {}, {u"d"_s}};
        QCOMPARE(KanbanCards::neighbour(columns, u"c"_s, 1, 0), u"d"_s);
        QCOMPARE(KanbanCards::neighbour(columns, u"d"_s, -1, 0), u"a"_s);
        QCOMPARE(KanbanCards::neighbour(columns, u"d"_s, 1, 0), u"d"_s);
        QCOMPARE(KanbanCards::neighbour(columns, u"a"_s, 0, -1), u"a"_s);
        QCOMPARE(KanbanCards::neighbour(columns, u"a"_s, 0, 1), u"b"_s);
        QCOMPARE(KanbanCards::neighbour(columns, u"gone"_s, 0, 1), u"a"_s);
        QCOMPARE(KanbanCards::neighbour({}, u"gone"_s, 0, 1), u"gone"_s);
    }

    void aMoveWritesTheStatus()
    {
        KanbanStageSet set;
        const QSignalSpy problems(set.folder.view.get(), &IssuesView::problem);
        set.model.move(u"a-2"_s, u"review"_s);
        QVERIFY(set.folder.textOf(u"A-2"_s).contains(u"| 상태 | review |"_s));
        QCOMPARE(set.shown(), u"todo A-1 A-9 A-10|review A-2|보류 A-3|상태 없음 A-4"_s);

        set.model.setCurrentKey(u"a-2"_s);
        set.model.shift(-1); // to a status that had no column
        QVERIFY(set.folder.textOf(u"A-2"_s).contains(u"| 상태 | blocked |"_s));
        QCOMPARE(set.model.currentColumn(), 1);
        set.model.setCurrentKey(u"a-4"_s);
        set.model.shift(1); // nothing comes after no status
        set.model.shift(-1);
        QVERIFY(set.folder.textOf(u"A-4"_s).contains(u"보류"_s));
        QVERIFY(problems.isEmpty());

        QVERIFY(!set.model.takes(u"a-1"_s, {}) && !set.model.takes(u"a-1"_s, u"todo"_s)
                && !set.model.takes(u"a-1"_s, u"-"_s) && !set.model.takes(u"a-9"_s, u"done"_s));
        set.model.move(u"a-9"_s, u"done"_s);
        QCOMPARE(problems.count(), 1); // no file
        QFile::remove(set.folder.pathOf(u"A-1"_s));
        set.model.move(u"a-1"_s, u"done"_s);
        QCOMPARE(problems.count(), 2);
        QVERIFY(set.shown().startsWith(u"todo A-1 "_s));
    }

    void columnsShareTheWidth()
    {
        QCOMPARE(KanbanCards::columnWidth(1000, 4, 12, 210), 241.0);
        QCOMPARE(KanbanCards::columnWidth(600, 4, 12, 210), 210.0);
        QVERIFY(KanbanCards::columnWidth(1400, 1, 12, 210) < 500);
        KanbanStageSet set;
        QCOMPARE(set.model.wordAt(205, 200, 12), u"-"_s);
        QCOMPARE(set.model.wordAt(213, 200, 12), u"doing"_s);
        QCOMPARE(set.model.wordAt(-1, 200, 12), u"-"_s);
        QCOMPARE(set.model.wordAt(2000, 200, 12), u"-"_s);
    }

    void saysWhoWorksOnACard()
    {
        KanbanStageSet set;
        const auto mark = [&set] {
            return set.cardsOf(0)->index(0).data(IssueKanbanCards::SessionMarkRole).toInt();
        };
        QCOMPARE(mark(), -1);
        auto &runtime = set.folder.shell().runtime();
        runtime.issues().workOnIssue(u"billing"_s, set.folder.pathOf(u"A-1"_s));
        QTRY_COMPARE(mark(), static_cast<int>(SessionMarks::Kind::Idle));
        ProjectChat *chat = runtime.issues().sessionsOn(set.folder.pathOf(u"A-1"_s)).value(0);
        QVERIFY(chat);
        Test::ShellStage::run(*chat, u"go"_s);
        QTRY_COMPARE(mark(), static_cast<int>(SessionMarks::Kind::Running));
        Test::ShellStage::askPermission(*chat, u"Edit"_s, u"x"_s);
        QTRY_COMPARE(mark(), static_cast<int>(SessionMarks::Kind::WaitApproval));
        QVERIFY(set.cardsOf(0)->cards()[0].session->text.contains(u"Edit 승인 대기"_s));
        runtime.closeSession(chat);
        QTRY_COMPARE(mark(), -1);
    }
};

VESK_TEST(KanbanModelTest)
#include "KanbanModelTest.moc"
