// The picture of 2,000 issues and 4,000 relations, against Graphviz laying out the same graph; and what
// building a graph of 5,000 issues costs the main thread.
#include "bench/Rounds.h"
#include "issues/IssueGraph.h"
#include "issues/IssueGraphLayout.h"

#include <QProcess>
#include <QSet>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>

namespace
{

using namespace Vesk;

/** Issues that wait for others of a lower number, not far away as a rule. The same ones in every run. */
QList<IssueGraph::Input> someIssues(int count, int relations)
{
    constexpr int reach = 60;
    const auto id = [](int number) {
        return QStringLiteral("ISSUE-%1").arg(number, 4, 10, QLatin1Char('0'));
    };
    std::mt19937 random(7);
    const auto below = [&random](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    QList<IssueGraph::Input> issues;
    for (int number = 0; number < count; ++number)
        issues.append({.id = id(number), .title = QStringLiteral("이슈")});
    QSet<std::pair<int, int>> known;
    while (known.size() < relations) {
        const int from = below(count - 1);
        const int to = std::min(count - 1, from + 1 + below(reach));
        if (known.contains({from, to}))
            continue;
        known.insert({from, to});
        issues[from].blocks.append({.id = id(to)});
        issues[to].blockedBy.append({.id = id(from)});
    }
    return issues;
}

QByteArray asDot(const IssueGraph::Graph &graph)
{
    QByteArray text = "digraph { rankdir=LR; node [shape=box, width=2.1, height=0.56, fixedsize=true];\n";
    for (const IssueGraph::Edge &edge : graph.edges)
        text += '"' + edge.from.toUtf8() + "\" -> \"" + edge.to.toUtf8() + "\";\n";
    return text + "}\n";
}

/** Seconds; negative when the program is missing or fails. */
double secondsOfDot(const QByteArray &graph)
{
    const double start = Bench::now();
    QProcess dot;
    dot.start(QStringLiteral("dot"), {QStringLiteral("-Tplain")});
    if (!dot.waitForStarted())
        return -1;
    dot.write(graph);
    dot.closeWriteChannel();
    const bool finished = dot.waitForFinished(-1) && dot.exitCode() == 0;
    return finished && dot.readAllStandardOutput().startsWith("graph") ? Bench::now() - start : -1;
}

/** The shortest of some rounds: what else runs on the machine makes a round longer, never shorter. */
double secondsOf(const std::function<void()> &work)
{
    constexpr int rounds = 15;
    double shortest = 1e9;
    for (int round = 0; round < rounds; ++round) {
        const double start = Bench::now();
        work();
        shortest = std::min(shortest, Bench::now() - start);
    }
    return shortest;
}

} // namespace

int main()
{
    const IssueGraph::Graph graph = IssueGraph::build(someIssues(2000, 4000), {}, {});
    qsizetype points = 0;
    const double ours = secondsOf([&] {
        points = 0;
        for (const IssueGraph::Link &link : IssueGraph::layout(graph).links)
            points += link.points.size();
    });
    // Graphviz takes half a minute and more, so it has one go.
    const double reference = secondsOfDot(asDot(graph));
    if (reference < 0) {
        std::printf("Graphviz did not lay the graph out: is dot installed?\n");
        return 1;
    }
    std::printf("layout of %lld issues, %lld relations, %lld points: %.2f ms, dot: %.1f ms\n",
                static_cast<long long>(graph.nodes.size()), static_cast<long long>(graph.edges.size()),
                static_cast<long long>(points), ours * 1000, reference * 1000);
    const bool layoutMet = Bench::report("layout against Graphviz dot", ours / reference, "x", 0.02);

    const QList<IssueGraph::Input> many = someIssues(5000, 10000);
    qsizetype problems = 0;
    const double build = secondsOf([&] { problems += IssueGraph::build(many, {}, {}).problems.size(); });
    if (problems > 0)
        std::printf("the issues should have been without problems\n");
    const bool buildMet = Bench::report("graph of 5,000 issues", build * 1000, "ms", 50);
    return layoutMet && buildMet ? 0 : 1;
}
