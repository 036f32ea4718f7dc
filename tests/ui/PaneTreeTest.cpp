// Panes as a value: what any sequence of operations must leave true, where they lie, and how they are written
// down.
#include "ui/shell/PaneTree.h"

#include "support/TestRegistry.h"
#include "ui/shell/PaneLayout.h"

#include <QtTest>

#include <rapidcheck.h>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

constexpr double strip = 36;

QUuid session(int number)
{
    return {static_cast<uint>(number + 1), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
}

QString conversation(const QUuid &id)
{
    return u"c%1"_s.arg(id.data1);
}

PanePlace place(const QUuid &id)
{
    return {conversation(id), u"billing"_s, u"일"_s};
}

/** "(0 1*|2)/3" and so on: "|" side by side, "/" one above the other, "*" shown, "-" an empty pane. */
QString drawn(const PaneNode &node)
{
    if (!node.isPane()) {
        return u'(' + drawn(node.parts[0]) + (node.direction == Qt::Horizontal ? u'|' : u'/')
            + drawn(node.parts[1]) + u')';
    }
    QStringList tabs;
    for (const QUuid &tab : node.tabs) {
        tabs.append(QString::number(tab.data1 - 1) + (tab == node.shown ? u"*"_s : QString()));
    }
    return tabs.isEmpty() ? u"-"_s : tabs.join(u' ');
}

PaneTree withSessions(int count)
{
    PaneTree tree;
    for (int number = 0; number < count; ++number) {
        tree.add(session(number));
    }
    return tree;
}

int nodes(const PaneNode &node, int &worst)
{
    if (!node.isPane() && (node.ratio < PaneTree::leastRatio || node.ratio > PaneTree::greatestRatio)) {
        ++worst;
    }
    int count = 1;
    for (const PaneNode &part : node.parts) {
        count += nodes(part, worst);
    }
    return count;
}

void checkTree(const PaneTree &tree, QList<QUuid> open)
{
    QList<QUuid> found;
    QList<int> ids;
    for (const PaneNode *pane : tree.panes()) {
        RC_ASSERT((!pane->tabs.isEmpty() || pane == &tree.root() || pane->kept));
        RC_ASSERT((pane->tabs.isEmpty() ? pane->shown.isNull() : pane->tabs.contains(pane->shown)));
        RC_ASSERT(!ids.contains(pane->id));
        ids.append(pane->id);
        found += pane->tabs;
    }
    std::ranges::sort(found);
    std::ranges::sort(open);
    RC_ASSERT(found == open);
    RC_ASSERT(tree.focused().isPane());
    RC_ASSERT(ids.size() <= PaneTree::maximumPanes);
    int outOfRange = 0;
    RC_ASSERT(nodes(tree.root(), outOfRange) == 2 * ids.size() - 1);
    RC_ASSERT(outOfRange == 0);
}

void checkLayout(const PaneTree &tree, const QSizeF &size)
{
    const PaneLayout layout = layoutPanes(tree, size);
    double covered = 0;
    for (const PaneLayout::Pane &pane : layout.panes) {
        RC_ASSERT(QRectF(QPointF(), size).contains(pane.rect));
        covered += pane.rect.width() * pane.rect.height();
        for (const PaneLayout::Pane &other : layout.panes) {
            RC_ASSERT((pane.id == other.id || !pane.rect.intersects(other.rect)));
        }
    }
    for (const PaneLayout::Split &split : layout.splits) {
        covered += split.line.width() * split.line.height();
        RC_ASSERT((split.from <= split.value && split.value <= split.to));
    }
    RC_ASSERT(std::abs(covered - size.width() * size.height()) < 1);
}

/** One random thing that may happen, sensible or not. */
void happen(PaneTree &tree, QList<QUuid> &open)
{
    const int node = *rc::gen::inRange(0, 14);
    const QUuid id = session(*rc::gen::inRange(0, 8));
    switch (*rc::gen::inRange(0, 9)) {
    case 0:
    case 1:
        tree.add(id, *rc::gen::element(QString(), conversation(id)));
        if (!open.contains(id)) {
            open.append(id);
        }
        break;
    case 2:
        tree.remove(id);
        open.removeOne(id);
        break;
    case 3:
        tree.show(id);
        break;
    case 4:
        tree.move(id, node, *rc::gen::inRange(-1, 5));
        break;
    case 5:
    case 6:
        tree.split(node, static_cast<PaneSide>(*rc::gen::inRange(0, 4)), id);
        break;
    case 7:
        tree.focus(node);
        tree.close(node);
        break;
    default:
        tree.resize(node, *rc::gen::element(-1.0, 0.0, 0.3, 0.7, 2.0, std::nan("")));
        tree.even(*rc::gen::inRange(0, 14));
    }
}

} // namespace

class PaneTreeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whateverHappensEverySessionIsInOnePane()
    {
        QVERIFY(rc::check([] {
            PaneTree tree;
            QList<QUuid> open;
            for (int step = *rc::gen::inRange(0, 60); step > 0; --step) {
                happen(tree, open);
                checkTree(tree, open);
                if (step % 20 == 0) { // another run of the program
                    tree = PaneTree::fromJson(tree.toJson(place));
                    open.clear();
                    checkTree(tree, open);
                }
            }
            checkLayout(tree, {*rc::gen::inRange(1, 3000) * 1.0, *rc::gen::inRange(1, 2000) * 1.0});
        }));
    }

    void tabsGoWhereTheyAreTaken()
    {
        PaneTree tree = withSessions(4);
        QCOMPARE(drawn(tree.root()), u"0* 1 2 3"_s);
        const int first = tree.focused().id;
        QVERIFY(tree.split(first, PaneSide::Right, session(1)));
        QCOMPARE(drawn(tree.root()), u"(0* 2 3|1*)"_s);
        const int right = tree.focused().id;
        QVERIFY(!tree.split(right, PaneSide::Below, session(1))); // it is alone there
        QVERIFY(tree.split(right, PaneSide::Above, session(0)));
        QCOMPARE(drawn(tree.root()), u"(2* 3|(0*/1*))"_s);
        QVERIFY(tree.move(session(3), right, 0));
        QCOMPARE(drawn(tree.root()), u"(2*|(0*/3* 1))"_s);
        QVERIFY(tree.move(session(3), right, 2)); // behind the other one
        QCOMPARE(drawn(tree.root()), u"(2*|(0*/1 3*))"_s);
        QVERIFY(tree.move(session(2), right));
        QCOMPARE(drawn(tree.root()), u"(0*/1 3 2*)"_s);
        QVERIFY(tree.remove(session(2)));
        QCOMPARE(drawn(tree.root()), u"(0*/1 3*)"_s);
        QVERIFY(tree.show(session(0)));
        QVERIFY(tree.remove(session(0)));
        QCOMPARE(drawn(tree.root()), u"1 3*"_s);
        QCOMPARE(tree.focused().shown, session(3));
    }

    void aRowOfPanesBecomesEven()
    {
        PaneTree tree = withSessions(4);
        for (int number = 1; number < 4; ++number) {
            tree.split(tree.focused().id, PaneSide::Right, session(number));
        }
        QVERIFY(tree.even(tree.root().id));
        QVERIFY(!tree.even(tree.root().id));
        const PaneLayout layout = layoutPanes(tree, {1603, 600});
        for (const PaneLayout::Pane &pane : layout.panes) {
            QVERIFY(std::abs(pane.rect.width() - 400) <= 1);
        }
        // Nobody becomes smaller than the least, as long as there is room.
        QVERIFY(tree.resize(tree.root().id, 0.05));
        QCOMPARE(layoutPanes(tree, {1603, 600}).panes.at(0).rect.width(), leastPane.width());
        QVERIFY(layoutPanes(tree, {403, 600}).panes.at(0).rect.width() >= 99);
    }

    void besideMeansTouching()
    {
        PaneTree tree = withSessions(4); // 0 left; at the right 1 over (2 beside 3)
        const int left = tree.focused().id;
        tree.split(left, PaneSide::Right, session(1));
        const int top = tree.focused().id;
        tree.split(top, PaneSide::Below, session(2));
        const int middle = tree.focused().id;
        tree.split(middle, PaneSide::Right, session(3));
        const int corner = tree.focused().id;
        tree.resize(tree.root().id, 0.3);
        QCOMPARE(drawn(tree.root()), u"(0*|(1*/(2*|3*)))"_s);
        const PaneLayout layout = layoutPanes(tree, {1600, 900});
        QCOMPARE(paneBeside(layout, left, PaneSide::Left), 0);
        QCOMPARE(paneBeside(layout, middle, PaneSide::Right), corner);
        QCOMPARE(paneBeside(layout, middle, PaneSide::Left), left);
        QCOMPARE(paneBeside(layout, corner, PaneSide::Above), top);
        QCOMPARE(paneBeside(layout, top, PaneSide::Left), left);
        QCOMPARE(paneBeside(layout, top, PaneSide::Above), 0);
    }

    void whatATabDoesWhereItIsLetGo_data()
    {
        QTest::addColumn<QPointF>("point");
        QTest::addColumn<int>("dragged");
        QTest::addColumn<QString>("wanted"); // pane, "strip" or side
        QTest::addColumn<QRectF>("mark");
        // Two panes side by side, 0 and 1 in the left one, 2 in the right one; 1401 x 600.
        QTest::newRow("tabs") << QPointF(20, 10) << 2 << u"left strip"_s << QRectF(0, 0, 700, 36);
        QTest::newRow("middle") << QPointF(1050, 300) << 0 << u"right"_s << QRectF(701, 36, 700, 564);
        QTest::newRow("own middle") << QPointF(350, 300) << 0 << u"nothing"_s << QRectF();
        QTest::newRow("own edge") << QPointF(10, 300) << 0 << u"left 0"_s << QRectF(0, 36, 350, 564);
        QTest::newRow("own edge, alone") << QPointF(1390, 300) << 2 << u"nothing"_s << QRectF();
        QTest::newRow("below") << QPointF(1050, 590) << 0 << u"right 3"_s << QRectF(701, 318, 700, 282);
        QTest::newRow("outside") << QPointF(-5, 300) << 0 << u"nothing"_s << QRectF();
    }

    void whatATabDoesWhereItIsLetGo()
    {
        QFETCH(QPointF, point);
        QFETCH(int, dragged);
        QFETCH(QRectF, mark);
        PaneTree tree = withSessions(3);
        const int left = tree.focused().id;
        tree.split(left, PaneSide::Right, session(2));
        const PaneDrop drop =
            paneDropAt(tree, layoutPanes(tree, {1401, 600}), session(dragged), point, strip);
        QString said = drop.pane == 0 ? u"nothing"_s : drop.pane == left ? u"left"_s : u"right"_s;
        said += drop.onStrip ? u" strip"_s : drop.side ? u" %1"_s.arg(static_cast<int>(*drop.side)) : u""_s;
        QTEST(said, "wanted");
        QCOMPARE(drop.mark, mark);
        // Where half a pane would be too little, its edge is as its middle.
        const PaneDrop narrow =
            paneDropAt(tree, layoutPanes(tree, {1001, 400}), session(0), {995, 200}, strip);
        QVERIFY(narrow.pane != left && !narrow.side);
    }

    void aConversationComesBackToItsPlace()
    {
        PaneTree tree = withSessions(3);
        tree.split(tree.focused().id, PaneSide::Below, session(1));
        tree.resize(tree.root().id, 0.7);
        PaneTree later = PaneTree::fromJson(tree.toJson(place));
        QCOMPARE(drawn(later.root()), u"(-/-)"_s);
        QCOMPARE(later.root().ratio, 0.7);
        QCOMPARE(later.focused().id, later.panes().at(1)->id);
        QVERIFY(later.add(session(0), conversation(session(0))));
        QVERIFY(later.add(session(5), u"another"_s));
        QCOMPARE(drawn(later.root()), u"(0*/5*)"_s);
        QVERIFY(later.remove(session(5))); // the pane is an ordinary one now
        QCOMPARE(drawn(later.root()), u"0*"_s);
        QVERIFY(PaneTree().toJson(place).isEmpty());
    }

    void whatWasShownIsShownAgain()
    {
        PaneTree tree = withSessions(4);
        tree.show(session(2));
        PaneTree later = PaneTree::fromJson(tree.toJson(place));
        QCOMPARE(later.root().places.size(), 4);
        QCOMPARE(later.root().places.at(1), place(session(1)));
        for (const int number : {0, 1, 2}) {
            later.add(session(number), conversation(session(number)));
        }
        QCOMPARE(drawn(later.root()), u"0 1 2*"_s);
        // Whoever has not come back yet keeps the place over a further run.
        QCOMPARE(later.toJson(place), tree.toJson(place));
        QVERIFY(later.forgetPlaces());
        QCOMPARE(PaneTree::fromJson(later.toJson(place)).root().places.size(), 3);
        QVERIFY(!later.forgetPlaces());
    }

    void whatIsNoLayoutIsOnePane_data()
    {
        QTest::addColumn<QByteArray>("json");
        const QByteArray pane = "{\"places\":[]}";
        const auto split = [](const QByteArray &ratio, const QByteArray &a, const QByteArray &b) {
            return QByteArray("{\"split\":\"right\",\"ratio\":") + ratio + ",\"parts\":[" + a + ',' + b
                + "]}";
        };
        QByteArray deep = pane;
        for (int level = 0; level < 200; ++level) {
            deep = split("0.5", pane, deep);
        }
        const auto layout = [](const QByteArray &root) {
            return QByteArray("{\"focused\":0,\"root\":") + root + '}';
        };
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("no JSON") << QByteArray("(1|2)");
        QTest::newRow("cut") << layout(split("0.5", pane, pane)).chopped(3);
        QTest::newRow("another type") << QByteArray("[1, 2]");
        QTest::newRow("a single pane") << layout(pane);
        QTest::newRow("ratio") << layout(split("1.5", pane, pane));
        QTest::newRow("no ratio") << layout(split("\"half\"", pane, pane));
        QTest::newRow("a part that is none") << layout(split("0.5", pane, "7"));
        QTest::newRow("too many") << layout(deep);
        QTest::newRow("too long") << layout(split("0.5", pane, pane)) + QByteArray(3 * 1024 * 1024, ' ');
    }

    void whatIsNoLayoutIsOnePane()
    {
        QFETCH(QByteArray, json);
        const PaneTree tree = PaneTree::fromJson(json);
        QVERIFY(tree.root().isPane());
        QVERIFY(!tree.root().kept);
    }
};

VESK_TEST(PaneTreeTest)
#include "PaneTreeTest.moc"
