#include "issues/GraphSketch.h"
#include "issues/IssueGraphLayout.h"
#include "issues/IssueGraphMemo.h"
#include "issues/IssueLinkCurves.h"
#include "support/TestRegistry.h"

#include <QtTest>

#include <rapidcheck.h>

using namespace Vesk;
using namespace Vesk::IssueGraph;
using namespace Vesk::Test;
using namespace Qt::StringLiterals;

namespace
{

/** The cards of a picture, column by column: "A B | C". */
QString arranged(const Layout &layout)
{
    QString text;
    for (int column = 0; const Placement &placement : layout.placements) {
        if (!text.isEmpty()) {
            text += placement.column > column ? u" | "_s : u" "_s;
        }
        column = placement.column;
        text += placement.node.id;
    }
    return text;
}

const Link &linkOf(const Layout &layout, const QString &from, const QString &to)
{
    return *std::find_if(layout.links.begin(), layout.links.end(),
                         [&](const Link &link) { return link.from == from && link.to == to; });
}

} // namespace

class IssueLayoutTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void arrangesCards_data()
    {
        QTest::addColumn<QString>("sketch");
        QTest::addColumn<QString>("cards");
        QTest::addColumn<QSizeF>("size");
        QTest::newRow("nothing") << u"A B"_s << QString() << QSizeF(0, 0);
        QTest::newRow("by key first") << u"B>C A>C"_s << u"A B | C"_s << QSizeF(544, 174);
        QTest::newRow("crossings are undone")
            << u"A>Z A>X B>Y C>X"_s << u"A C B | Z X Y"_s << QSizeF(544, 244);
        QTest::newRow("a lane behind the card") << u"A>B B>C A>C"_s << u"A | B | C"_s << QSizeF(830, 117);
    }
    void arrangesCards()
    {
        QFETCH(QString, sketch);
        const Layout picture = layout(sketchedGraph(sketch));
        QTEST(arranged(picture), "cards");
        QTEST(picture.size, "size");
    }

    void longLinksPassInLanes()
    {
        const Layout picture = layout(sketchedGraph(u"A>B B>C C>D A>D! D>B"_s));
        QCOMPARE(arranged(picture), u"A | B | C | D"_s);
        const Link &passing = linkOf(picture, u"a"_s, u"d"_s);
        QVERIFY(passing.struck && passing.resolved && !passing.backward);
        QCOMPARE(passing.points,
                 (QList<QPointF> {{234, 52}, {415, 24 + 70 + 6.5}, {701, 24 + 70 + 6.5}, {882, 52}}));
        const Link &back = linkOf(picture, u"d"_s, u"b"_s);
        QVERIFY(back.backward);
        QCOMPARE(back.points, (QList<QPointF> {{1092, 52}, {520, 52}}));
        QCOMPARE(picture.size.height(), 24 + 70 + 13 - 14 + 24.0);
    }

    void layersWithoutCardsTakeNoColumn()
    {
        Graph graph = sketchedGraph(u"A>B B>C A>C"_s);
        graph.nodes[1].depth = 3;
        graph.nodes[2].depth = 3;
        const Layout picture = layout(graph);
        QCOMPARE(arranged(picture), u"A | B C"_s);
        QVERIFY(linkOf(picture, u"b"_s, u"c"_s).backward); // side by side
    }

    void holdsForAnyGraph()
    {
        QVERIFY(rc::check("cards apart, links from card to card", [] {
            const Graph graph = sketchedGraph(anySketch());
            const Layout picture = layout(graph);
            RC_ASSERT(picture == layout(graph));
            RC_ASSERT(picture.placements.size() == graph.nodes.size());
            RC_ASSERT(picture.links.size() == graph.edges.size());
            const QRectF sheet(QPointF(), picture.size);
            QHash<QString, Placement> cards;
            for (const Placement &card : picture.placements) {
                const auto inside = sheet.marginsRemoved({24, 24, 24, 24});
                RC_ASSERT(inside.contains(card.frame));
                for (const Placement &other : std::as_const(cards)) {
                    RC_ASSERT(!card.frame.intersects(other.frame));
                }
                cards.insert(card.node.key, card);
            }
            for (qsizetype at = 0; at < picture.links.size(); ++at) {
                const Link &link = picture.links[at];
                RC_ASSERT(link.from == graph.edges[at].from && link.to == graph.edges[at].to);
                const Placement &from = cards[link.from];
                const Placement &to = cards[link.to];
                RC_ASSERT(link.backward == (from.column >= to.column));
                RC_ASSERT(link.points.first() == QPointF(from.frame.right(), from.frame.center().y()));
                RC_ASSERT(
                    link.points.last()
                    == QPointF(link.backward ? to.frame.right() : to.frame.left(), to.frame.center().y()));
                RC_ASSERT(link.points.size() == (link.backward ? 2 : to.column - from.column + 1));
                for (const QPointF &point : link.points.mid(1, link.points.size() - 2)) {
                    for (const Placement &card : std::as_const(cards)) {
                        RC_ASSERT(!card.frame.contains(point));
                    }
                }
            }
        }));
    }

    void curvesOfLinks()
    {
        using namespace IssueLinkCurves;
        const Link forward {.points = {{0, 0}, {100, 40}, {110, 40}}};
        QCOMPARE(cubics(forward),
                 (QList<Cubic> {{{0, 0}, {45, 0}, {55, 40}, {100, 40}},
                                {{100, 40}, {118, 40}, {92, 40}, {110, 40}}}));
        const Link backward {.points = {{50, 300}, {50, 100}}, .backward = true};
        QCOMPARE(cubics(backward), (QList<Cubic> {{{50, 300}, {130, 300}, {130, 100}, {50, 100}}}));
        const Link level {.points = {{50, 10}, {0, 10}}, .backward = true};
        QCOMPARE(cubics(level).first().control1, QPointF(90, 10));
        QCOMPARE(arrowHead(forward), (std::array<QPointF, 3> {QPointF {110, 40}, {105, 36.5}, {105, 43.5}}));
        QCOMPARE(arrowHead(level)[1], QPointF(5, 6.5));
    }

    void strokesOfLinks()
    {
        using namespace IssueLinkCurves;
        const Link open;
        const Link resolved {.resolved = true};
        const Link resolvedBack {.resolved = true, .backward = true};
        QCOMPARE(tone(open), Tone::Open);
        QCOMPARE(tone(resolved), Tone::Resolved);
        QCOMPARE(tone(resolvedBack), Tone::Backward);
        QCOMPARE(stroke(open, true), (Stroke {1.6, 0.75, false}));
        QCOMPARE(stroke(resolvedBack, true), (Stroke {1, 0.4, true}));
        QCOMPARE(stroke(open, false), (Stroke {1, 0.1, false}));
        QCOMPARE(stroke(resolved, false), (Stroke {1, 0.07, true}));
    }

    void turnsOfLinks()
    {
        using IssueLinkCurves::drawOrder;
        using Turns = QList<IssueLinkCurves::Turn>;
        const QList<Link> links {{.from = u"a"_s, .to = u"b"_s},
                                 {.from = u"b"_s, .to = u"c"_s, .resolved = true},
                                 {.from = u"x"_s, .to = u"b"_s}};
        const QSet<QString> chain {u"a"_s, u"b"_s, u"c"_s};
        QCOMPARE(drawOrder(links, std::nullopt, true), (Turns {{0, true}, {1, true}, {2, true}}));
        QCOMPARE(drawOrder(links, chain, true), (Turns {{2, false}, {0, true}, {1, true}}));
        QCOMPARE(drawOrder(links, chain, false), (Turns {{2, false}, {0, true}}));
    }

    void remembersPictures()
    {
        IssueGraphMemo memo;
        const QString sketch = u"A>B B>C A@M1 D"_s;
        const Graph graph = sketchedGraph(sketch);
        const auto prepared = memo.prepared(graph, QString());
        QCOMPARE(prepared->layout, layout(graph));
        QCOMPARE(memo.prepared(sketchedGraph(sketch), QString()), prepared);
        QCOMPARE(memo.chain(prepared->scoped, u"c"_s), (QSet<QString> {u"a"_s, u"b"_s, u"c"_s}));
        QCOMPARE(memo.chain(prepared->scoped, std::nullopt), std::nullopt);
        QCOMPARE(memo.chain(prepared->scoped, u"d"_s), std::nullopt);

        const auto scope = memo.prepared(graph, u"M1"_s);
        QCOMPARE(scope->scoped.nodes.size(), 2);
        QCOMPARE(memo.chain(scope->scoped, u"b"_s), (QSet<QString> {u"a"_s, u"b"_s}));
        QVERIFY(memo.prepared(sketchedGraph(sketch + u" B=done"_s), u"M1"_s) != scope);

        const auto board = memo.isolatedBoard(graph);
        QCOMPARE(board->columns.size(), 1);
        QCOMPARE(memo.isolatedBoard(sketchedGraph(sketch)), board);
        QVERIFY(memo.isolatedBoard(sketchedGraph(sketch + u" E=done"_s)) != board);
    }
};

VESK_TEST(IssueLayoutTest)
#include "IssueLayoutTest.moc"
