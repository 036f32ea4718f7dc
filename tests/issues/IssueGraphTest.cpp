#include "issues/IssueGraph.h"

#include "issues/GraphSketch.h"
#include "support/TestRegistry.h"

#include <QtTest>

#include <rapidcheck.h>

using namespace Vesk;
using namespace Vesk::IssueGraph;
using namespace Vesk::Test;
using namespace Qt::StringLiterals;

namespace
{

/** "A ready 1 2 0": an issue, its readiness, how many it blocks directly and in all, its layer. */
QString described(const QList<Node> &nodes)
{
    QStringList lines;
    for (const Node &node : nodes) {
        const QStringList readiness {u"ready"_s, u"blocked"_s, u"settled"_s};
        lines.append(node.id + u' ' + readiness.at(static_cast<int>(node.readiness)) + u' '
                     + QString::number(node.blocking) + u' ' + QString::number(node.downstream) + u' '
                     + QString::number(node.depth));
    }
    return lines.join(u", "_s);
}

QStringList identities(const QList<Problem> &problems)
{
    QStringList ids;
    for (const Problem &problem : problems) {
        ids.append(problem.id());
    }
    return ids;
}

QString sorted(const QSet<QString> &keys)
{
    QStringList list = keys.values();
    list.sort();
    return list.join(u' ');
}

QSet<QString> reachedFrom(const QString &key, const QList<Edge> &edges, bool openOnly)
{
    QSet<QString> seen;
    QStringList waiting {key};
    while (!waiting.isEmpty()) {
        const QString now = waiting.takeLast();
        for (const Edge &edge : edges) {
            if (edge.from == now && !(openOnly && edge.resolved) && !seen.contains(edge.to)) {
                seen.insert(edge.to);
                waiting.append(edge.to);
            }
        }
    }
    return seen;
}

} // namespace

class IssueGraphTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void weighsIssues_data()
    {
        QTest::addColumn<QString>("sketch");
        QTest::addColumn<QString>("nodes");
        QTest::newRow("a chain") << u"A>B B>C"_s << u"A ready 1 2 0, B blocked 1 1 1, C blocked 0 0 2"_s;
        QTest::newRow("a finished blocker")
            << u"A=done A>B B>C"_s << u"A settled 0 0 0, B ready 1 1 1, C blocked 0 0 2"_s;
        QTest::newRow("a blocker with a line through it, at one end")
            << u"A>B!"_s << u"A ready 0 0 0, B ready 0 0 1"_s;
        QTest::newRow("finished with an open blocker")
            << u"A>B B=cancelled"_s << u"A ready 1 1 0, B settled 0 0 1"_s;
        QTest::newRow("a diamond counts its foot once")
            << u"A>B A>C B>D C>D"_s << u"A ready 2 3 0, B blocked 1 1 1, C blocked 1 1 1, D blocked 0 0 2"_s;
        QTest::newRow("the longest way gives the layer")
            << u"A>D A>B B>C C>D"_s << u"A ready 2 3 0, D blocked 0 0 3, B blocked 1 2 1, C blocked 1 1 2"_s;
        QTest::newRow("a loop does not count itself")
            << u"A>B B>A B>C"_s << u"A blocked 1 2 0, B blocked 2 2 1, C blocked 0 0 2"_s;
        QTest::newRow("a self reference is no relation") << u"A>A<"_s << QString();
    }
    void weighsIssues()
    {
        QFETCH(QString, sketch);
        QTEST(described(sketchedGraph(sketch).nodes), "nodes");
    }

    void findsProblems_data()
    {
        QTest::addColumn<QString>("sketch");
        QTest::addColumn<QStringList>("ids");
        QTest::newRow("none") << u"A>B B>C A>C!"_s << QStringList();
        QTest::newRow("a loop, from where it was entered") << u"B>A A>B"_s << QStringList {u"cycle:B>A"_s};
        QTest::newRow("two loops through one issue")
            << u"A>B B>A B>C C>B"_s << QStringList {u"cycle:A>B"_s, u"cycle:B>C"_s};
        QTest::newRow("written at the blocked alone") << u"A>B<"_s << QStringList {u"one:A:B:A:후행"_s};
        QTest::newRow("written at the blocker alone") << u"A>B>"_s << QStringList {u"one:A:B:B:선행"_s};
        QTest::newRow("by weight, then by id")
            << u"B>B> A>C< ?X>A A>?Y C>D D>C A>B>"_s
            << QStringList {u"cycle:C>D"_s,      u"missing:A:선행:?X"_s, u"missing:A:후행:?Y"_s,
                            u"one:A:B:B:선행"_s, u"one:A:C:A:후행"_s,    u"self:B:후행"_s};
    }
    void findsProblems()
    {
        QFETCH(QString, sketch);
        QTEST(identities(sketchedGraph(sketch).problems), "ids");
    }

    void speaksOfProblems_data()
    {
        QTest::addColumn<Problem>("problem");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("primary");
        QTest::newRow("cycle") << Problem {Cycle {{u"A"_s, u"B"_s}}}
                               << u"순환 의존: A → B → A — 이 사슬은 서로를 막아 영원히 안 풀립니다"_s
                               << u"A"_s;
        QTest::newRow("missing") << Problem {Missing {u"A"_s, u"선행"_s, u"로그인"_s}}
                                 << u"없는 이슈 참조: A의 `선행`에 적힌 로그인 — 파일도 보드 행도 없습니다"_s
                                 << u"A"_s;
        QTest::newRow("one-sided") << Problem {OneSided {u"A"_s, u"B"_s, u"B"_s, u"선행"_s}}
                                   << u"한쪽만 적힌 관계: A → B — B의 `선행` 칸에 반대쪽이 없습니다"_s
                                   << u"B"_s;
        QTest::newRow("self") << Problem {SelfReference {u"A"_s, u"후행"_s}}
                              << u"자기 참조: A의 `후행` 칸이 자기 자신을 가리킵니다"_s << u"A"_s;
        QTest::newRow("duplicate") << Problem {Duplicate {u"A"_s, 3}}
                                   << u"같은 번호 파일 3개: A — 그래프엔 하나만 그려집니다"_s << u"A"_s;
    }
    void speaksOfProblems()
    {
        QFETCH(Problem, problem);
        QTEST(problem.message(), "message");
        QTEST(primaryID(problem), "primary");
    }

    void takesTheFirstFileOfANumber()
    {
        Input first {.id = u"A-1"_s, .title = u"첫"_s};
        Input again {.id = u"a-1"_s, .title = u"둘째"_s, .blocks = {{.id = u"b"_s}}};
        const Graph graph = build({first, {.id = u"B"_s}, again, {.id = QString()}, again}, {}, {});
        QCOMPARE(graph.isolated(), QStringList({u"A-1"_s, u"B"_s}));
        QCOMPARE(identities(graph.problems), QStringList {u"dup:A-1:3"_s});
    }

    void rowsOfTheBoardBlockToo()
    {
        const QList<BoardRow> rows {{.id = u"?X"_s, .title = QString(), .status = u"완료"_s},
                                    {.id = u"?Y"_s, .title = u"줄"_s},
                                    {.id = u"a"_s, .title = u"파일이 있다"_s}};
        const Graph graph = build(sketchedInputs(u"?x>A< ?Y>A<"_s), rows, {});
        QCOMPARE(described(graph.nodes), u"A blocked 0 0 1, ?X settled 0 0 0, ?Y ready 1 1 0"_s);
        QCOMPARE(graph.nodes[0].unresolved, QStringList {u"?Y"_s});
        QCOMPARE(graph.nodes[1].title, u"?X"_s);
        QVERIFY(graph.problems.isEmpty());
    }

    void notesBesideReferences()
    {
        const Graph graph = sketchedGraph(u"A>B< C>A> A>A< B>C< B>D>"_s);
        const auto notes = refNotes(u"b"_s, graph.problems);
        QCOMPARE(notes.size(), 2);
        QCOMPARE(notes[u"a"_s], u"반대쪽이 비어 있습니다 — A의 `후행` 칸에 b를 적으세요"_s);
        QCOMPARE(notes[u"d"_s], u"반대쪽이 비어 있습니다 — D의 `선행` 칸에 b를 적으세요"_s);
        QCOMPARE(refNotes(u"A"_s, graph.problems),
                 (QHash<QString, QString> {{u"a"_s, u"자기 자신을 가리킵니다 — `선행` 칸에서 지우세요"_s}}));
        QVERIFY(refNotes(QString(), graph.problems).isEmpty());
    }

    void chains_data()
    {
        QTest::addColumn<QString>("sketch");
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("chain");
        QTest::newRow("no siblings") << u"A>B A>C B>D C>D E>C"_s << u"B"_s << u"a b d"_s;
        QTest::newRow("resolved relations too") << u"A=done A>B! B>C"_s << u"c"_s << u"a b c"_s;
        QTest::newRow("out of a loop on both sides") << u"X>A A>B B>A B>Y"_s << u"A"_s << u"a b x y"_s;
        QTest::newRow("isolated") << u"A>B C"_s << u"C"_s << QString();
    }
    void chains()
    {
        QFETCH(QString, sketch);
        QFETCH(QString, id);
        QTEST(sorted(sketchedGraph(sketch).chain(id)), "chain");
    }

    void scopesToAMilestone()
    {
        const Graph graph = sketchedGraph(u"Z>A A>B B>C C>D D>E E>F A>D C@M1 D@M1 F@M2 G@M3 B>E X>X<"_s);
        const Graph scope = scoped(graph, u"M1"_s);
        QCOMPARE(described(scope.nodes),
                 u"A blocked 2 5 0, B blocked 2 4 1, C blocked 1 3 2, D blocked 1 2 3, E blocked 1 1 4"_s);
        QCOMPARE(scope.edges.size(), 6); // B>E among them: between neighbours
        QVERIFY(scope.nodes[0].context && !scope.nodes[2].context);
        QCOMPARE(scope.readyCount() + scope.blockedCount(), 2);
        QCOMPARE(scope.problems, graph.problems);
        QCOMPARE(scope.isolated(), (QStringList {u"G"_s, u"X"_s}));
        for (const QString &whole : {QString(), u"M3"_s, u"m1"_s}) {
            QCOMPARE(scoped(graph, whole), graph);
        }
    }

    void listsMilestones()
    {
        const auto inputs = sketchedInputs(u"A@M2 B@M9 C@M1"_s);
        const Graph graph = build(
            inputs, {{.id = u"R"_s, .milestone = u"M2 (7월)"_s}, {.id = u"S"_s, .milestone = u"가 — 나"_s}},
            {u"비었다"_s, u"M9 · 끝"_s, u"M9"_s, u"M2 (6월)"_s});
        QCOMPARE(graph.milestones, (QStringList {u"M9"_s, u"M2"_s, u"M1"_s, u"가"_s}));
    }

    void holdsForAnyGraph()
    {
        QVERIFY(rc::check("nodes stand once, counts are what a plain walk counts", [] {
            const QString sketch = anySketch();
            const Graph graph = sketchedGraph(sketch);
            QSet<QString> connected;
            for (const Edge &edge : graph.edges) {
                connected << edge.from << edge.to;
            }
            QHash<QString, int> depths;
            QSet<QString> once;
            for (const Node &node : graph.nodes + graph.isolatedNodes) {
                RC_ASSERT(!once.contains(node.key));
                once.insert(node.key);
                depths.insert(node.key, node.depth);
                QSet<QString> below = reachedFrom(node.key, graph.edges, true);
                below.remove(node.key);
                RC_ASSERT(node.downstream == below.size());
            }
            for (const Node &node : graph.nodes) {
                RC_ASSERT(connected.contains(node.key));
            }
            RC_ASSERT(graph.nodes.size() == connected.size());
            RC_ASSERT(once.size() == sketchedInputs(sketch).size());
            bool looped = false;
            for (const Edge &edge : graph.edges) {
                const bool inLoop = reachedFrom(edge.to, graph.edges, false).contains(edge.from);
                looped = looped || inLoop;
                RC_ASSERT(inLoop || depths[edge.from] < depths[edge.to]);
            }
            const bool told =
                !graph.problems.isEmpty() && std::holds_alternative<Cycle>(graph.problems.first().what);
            RC_ASSERT(told == looped);
        }));
    }

    void longOnesDoNotOverflow_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<bool>("closed");
        QTest::newRow("a loop of 500") << 500 << true;
        QTest::newRow("a chain of 20,000") << 20000 << false;
    }
    void longOnesDoNotOverflow()
    {
        QFETCH(int, count);
        QFETCH(bool, closed);
        QList<Input> inputs;
        for (int issue = 0; issue < count; ++issue) {
            Input input {.id = QString::number(issue)};
            if (issue > 0 || closed) {
                input.blockedBy.append({.id = QString::number((issue + count - 1) % count)});
            }
            inputs.append(input);
        }
        const Graph graph = build(inputs, {}, {});
        QCOMPARE(graph.nodes.last().depth, count - 1);
        QCOMPARE(graph.nodes.first().downstream, count - 1);
        QCOMPARE(graph.chain(u"7"_s).size(), count);
        const auto *cycle = std::get_if<Cycle>(&graph.problems.first().what);
        QCOMPARE(cycle ? cycle->ids.size() : 0, closed ? count : 0);
    }
};

VESK_TEST(IssueGraphTest)
#include "IssueGraphTest.moc"
