// The graph of an issue window without a window: what cards say, where keys lead, what is held ready.
#include "support/TestRegistry.h"
#include "ui/IssueFolderStage.h"
#include "ui/issues/GraphCards.h"
#include "ui/issues/IssueGraphModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;
using Test::IssueFolderStage;

namespace
{

/** A blocks B and C; B blocks D; E, settled, blocks B; F and G block each other. */
void putSmallGraph(const IssueFolderStage &stage)
{
    stage.put(u"A-1"_s, u"a"_s, {u"상태 | doing"_s, u"마일스톤 | M1"_s});
    stage.put(u"A-2"_s, u"b"_s, {u"상태 | todo"_s, u"선행 | A-1, A-5"_s, u"마일스톤 | M1"_s});
    stage.put(u"A-3"_s, u"c"_s, {u"상태 | blocked"_s, u"선행 | A-1"_s, u"마일스톤 | M2"_s});
    stage.put(u"A-4"_s, u"d"_s, {u"상태 | todo"_s, u"선행 | A-2"_s, u"마일스톤 | M2"_s});
    stage.put(u"A-5"_s, u"e"_s, {u"상태 | done"_s, u"마일스톤 | M1"_s});
    stage.put(u"A-8"_s, u"alone"_s, {u"상태 | todo"_s});
}

QStringList ids(const QAbstractItemModel &model)
{
    QStringList ids;
    for (int row = 0; row < model.rowCount(); ++row) {
        ids.append(model.index(row, 0).data(IssueGraphModel::IdRole).toString());
    }
    ids.sort();
    return ids;
}

QVariant ofCard(const QAbstractItemModel &model, const QString &key, int role)
{
    const auto found = model.match(model.index(0, 0), IssueGraphModel::KeyRole, key, 1, Qt::MatchExactly);
    return found.isEmpty() ? QVariant() : found.first().data(role);
}

struct GraphStageSet {
    GraphStageSet()
    {
        putSmallGraph(folder);
        folder.look();
        model.setView(folder.view.get());
        model.stage()->setSize({900, 400});
    }

    IssueFolderStage folder;
    IssueGraphModel model;
    QAbstractItemModelTester tester {&model, QAbstractItemModelTester::FailureReportingMode::QtTest};
    QAbstractItemModelTester problems {model.problems(),
                                       QAbstractItemModelTester::FailureReportingMode::QtTest};
};

} // namespace

class GraphModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void saysHowACardStands_data()
    {
        QTest::addColumn<IssueStatus::Kind>("status");
        QTest::addColumn<IssueGraph::Readiness>("readiness");
        QTest::addColumn<int>("unresolved");
        QTest::addColumn<QString>("text");
        QTest::addColumn<GraphCards::Tone>("tone");
        using Kind = IssueStatus::Kind;
        using GraphCards::Tone;
        using IssueGraph::Readiness;
        QTest::newRow("free") << Kind::Todo << Readiness::Ready << 0 << u"지금 가능"_s << Tone::Ready;
        QTest::newRow("begun") << Kind::Doing << Readiness::Ready << 0 << u"막는 것 1 · 아래로 3"_s
                               << Tone::Plain;
        QTest::newRow("waits") << Kind::Todo << Readiness::Blocked << 2 << u"선행 2 남음"_s << Tone::Waiting;
        QTest::newRow("blocked") << Kind::Blocked << Readiness::Blocked << 1 << u"선행 1 남음"_s
                                 << Tone::Blocked;
        QTest::newRow("settled") << Kind::Done << Readiness::Settled << 1 << u"M1"_s << Tone::Plain;
        QTest::newRow("blocked by something else")
            << Kind::Blocked << Readiness::Ready << 0 << u"막는 것 1 · 아래로 3"_s << Tone::Plain;
    }
    void saysHowACardStands()
    {
        QFETCH(IssueStatus::Kind, status);
        QFETCH(IssueGraph::Readiness, readiness);
        QFETCH(int, unresolved);
        QFETCH(QString, text);
        QFETCH(GraphCards::Tone, tone);
        IssueGraph::Node node {.id = u"A"_s, .key = u"a"_s, .title = {}, .milestone = u"M1"_s};
        node.status.kind = status;
        node.readiness = readiness;
        node.unresolved = QStringList(unresolved, u"B"_s);
        node.blocking = 1;
        node.downstream = 3;
        QCOMPARE(GraphCards::note(node), (GraphCards::Note {text, tone}));
    }

    void keysFollowTheLinks_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<GraphCards::Direction>("direction");
        QTest::addColumn<QString>("to");
        using enum GraphCards::Direction;
        QTest::newRow("on") << u"a-2"_s << Right << u"a-4"_s;
        QTest::newRow("back") << u"a-4"_s << Left << u"a-2"_s;
        QTest::newRow("to the nearest of two") << u"a-1"_s << Right << u"a-3"_s;
        QTest::newRow("without a link, to the next column") << u"a-3"_s << Right << u"a-4"_s;
        QTest::newRow("no further") << u"a-4"_s << Right << u"a-4"_s;
        QTest::newRow("down") << u"a-1"_s << Down << u"a-5"_s;
        QTest::newRow("no higher") << u"a-1"_s << Up << u"a-1"_s;
        QTest::newRow("from nowhere") << QString() << Left << u"a-1"_s;
    }
    void keysFollowTheLinks()
    {
        QFETCH(QString, from);
        QFETCH(GraphCards::Direction, direction);
        QFETCH(QString, to);
        GraphStageSet set;
        QCOMPARE(GraphCards::neighbour(set.model.layout(), from, direction), to);
    }

    void holdsALittleMoreThanIsSeen()
    {
        const QRectF sight(300, 50, 800, 400);
        const QRectF held = GraphCards::heldWindow(sight);
        QVERIFY(held.contains(sight));
        QVERIFY(sight.adjusted(-300, -200, 300, 200).contains(held));
        QCOMPARE(GraphCards::heldWindow(sight.translated(20, 30)), held);
        QVERIFY(GraphCards::heldWindow(sight.translated(-20, 0)) != held); // past a step
        QVERIFY(GraphCards::heldWindow({}).isEmpty());
    }

    void followsFolderScopeAndSelection()
    {
        GraphStageSet set;
        IssueGraphModel &model = set.model;
        QCOMPARE(ids(model), (QStringList {u"A-1"_s, u"A-2"_s, u"A-3"_s, u"A-4"_s, u"A-5"_s}));
        QCOMPARE(model.readyCount(), 1);
        QCOMPARE(model.blockedCount(), 3);
        QCOMPARE(model.milestones(), (QStringList {u"M1"_s, u"M2"_s}));
        QVERIFY(model.problems()->count() > 0); // nobody wrote the other side
        QVERIFY(!model.problems()->index(0).data(IssueProblemRows::IssueRole).toString().isEmpty());

        set.folder.view->selectId(u"A-4"_s);
        QCOMPARE(model.focusKey(), u"a-4"_s);
        QVERIFY(!ofCard(model, u"a-3"_s, IssueGraphModel::InChainRole).toBool());
        QVERIFY(ofCard(model, u"a-1"_s, IssueGraphModel::InChainRole).toBool());
        model.clearFocus();
        QVERIFY(ofCard(model, u"a-3"_s, IssueGraphModel::InChainRole).toBool());
        QCOMPARE(set.folder.view->selectedId(), u"A-4"_s);
        set.folder.view->selectId(u"A-1"_s);
        QCOMPARE(model.focusKey(), u"a-1"_s);
        set.folder.view->selectId(u"A-8"_s); // has no relations, and so no card
        QCOMPARE(model.focusKey(), QString());

        model.setMilestone(u"M2"_s);
        QCOMPARE(ids(model), (QStringList {u"A-1"_s, u"A-2"_s, u"A-3"_s, u"A-4"_s}));
        QVERIFY(ofCard(model, u"a-1"_s, IssueGraphModel::ContextRole).toBool());
        set.folder.put(u"A-3"_s, u"c"_s, {u"상태 | done"_s});
        set.folder.put(u"A-4"_s, u"d"_s, {u"상태 | todo"_s});
        set.folder.look();
        QCOMPARE(model.milestone(), QString()); // nothing is left of it
        QCOMPARE(ids(model), (QStringList {u"A-1"_s, u"A-2"_s, u"A-5"_s}));
    }

    void anUnchangedPictureStaysWhereItIs()
    {
        GraphStageSet set;
        GraphStage &stage = *set.model.stage();
        stage.zoomBy(1.5, {100, 100});
        const auto pan = stage.pan();
        set.folder.put(u"A-1"_s, u"another title"_s, {u"상태 | doing"_s, u"마일스톤 | M1"_s});
        set.folder.look();
        QCOMPARE(ofCard(set.model, u"a-1"_s, IssueGraphModel::TitleRole), u"another title"_s);
        QCOMPARE(stage.pan(), pan);
        set.model.setMilestone(u"M2"_s);
        QVERIFY(stage.zoom() <= 1);
    }

    void zoomKeepsWhatIsUnderThePointer()
    {
        GraphStageSet set;
        GraphStage &stage = *set.model.stage();
        stage.setUnit(1.3);
        const QPointF anchor(430, 170);
        const QPointF below = stage.inLayout(anchor);
        for (const double turn : {120., 240., -120., 15.}) {
            stage.wheel({0, turn}, anchor, true, false);
            QVERIFY(QLineF(stage.inLayout(anchor), below).length() < 0.001);
        }
        const auto pan = stage.pan();
        stage.wheel({0, -120}, anchor, false, true); // sideways
        QCOMPARE(stage.pan(), pan - QPointF(60, 0));
        stage.drag({3, 0});
        QCOMPARE(stage.pan(), pan - QPointF(60, 0));
        QVERIFY(stage.endDrag());
        stage.drag({30, 0});
        stage.drag({1, 0}); // back again: still no click
        QVERIFY(!stage.endDrag());
        QVERIFY(stage.endDrag());
    }

    void rowsAreUsedAgainWhileThePictureMoves()
    {
        IssueFolderStage folder;
        for (int number = 0; number < 120; ++number) {
            folder.put(u"B-%1"_s.arg(number), u"t"_s,
                       {u"상태 | todo"_s, u"선행 | B-%1"_s.arg((number + 119) % 120 / 12 * 12)});
        }
        folder.look();
        IssueGraphModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setView(folder.view.get());
        model.stage()->setSize({400, 300});
        const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        const auto before = model.rowCount();
        QVERIFY(before > 0 && before < 60);
        for (int frame = 0; frame < 40; ++frame) {
            model.stage()->wheel({0, -40}, {}, false, false);
            const QRectF sight = model.stage()->sight();
            int seen = 0;
            for (int row = 0; row < model.rowCount(); ++row) {
                seen += model.index(row).data(IssueGraphModel::FrameRole).toRectF().intersects(sight) ? 1 : 0;
            }
            const auto layout = model.layout();
            QCOMPARE(seen, std::ranges::count_if(layout.placements, [&sight](const auto &card) {
                         return card.frame.intersects(sight);
                     }));
        }
        QVERIFY(inserted.count() < 20);
    }

    void sketchesStandInForRows()
    {
        IssueFolderStage folder;
        for (int number = 0; number < 150; ++number) {
            folder.put(u"C-%1"_s.arg(number), u"t"_s, {u"상태 | todo"_s, u"선행 | C-%1"_s.arg(number / 3)});
        }
        folder.look();
        IssueGraphModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setView(folder.view.get());
        GraphStage &stage = *model.stage();
        stage.setSize({900, 700});
        const auto all = static_cast<size_t>(model.layout().placements.size());
        const auto seen = [&] {
            const auto layout = model.layout();
            const QRectF held = GraphCards::heldWindow(stage.sight());
            return std::ranges::count_if(layout.placements,
                                         [&held](const auto &card) { return card.frame.intersects(held); });
        };
        stage.setUnit(2);
        stage.zoomBy(0.3 / stage.zoom(), {});
        QVERIFY(!stage.isTiny()); // what is read counts, not the zoom
        stage.setUnit(1);
        stage.zoomBy(4, {});
        QTRY_COMPARE(model.rowCount(), seen());
        stage.zoomBy(0.01, {});
        QVERIFY(stage.isTiny());
        QCOMPARE(model.sketches().size(), all);

        stage.zoomBy(2.4, {});
        QVERIFY(!stage.isTiny());
        QVERIFY(model.rowCount() < seen()); // not all of them at once, and none is missing meanwhile
        QVERIFY(model.rowCount() + static_cast<int>(model.sketches().size()) >= seen());
        QTRY_COMPARE(model.rowCount(), seen());
        QVERIFY(model.sketches().empty());
    }
};

VESK_TEST(GraphModelTest)
#include "GraphModelTest.moc"
