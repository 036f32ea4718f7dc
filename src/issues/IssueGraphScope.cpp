// Parts of a finished graph: one milestone's, one issue's.
#include "issues/IssueGraphWalks_p.h"

#include <algorithm>
#include <functional>

namespace Vesk::IssueGraph
{
namespace
{

int countReadiness(const QList<Node> &nodes, Readiness readiness)
{
    return static_cast<int>(std::count_if(nodes.begin(), nodes.end(), [readiness](const Node &node) {
        return !node.context && node.readiness == readiness;
    }));
}

} // namespace

QStringList Graph::isolated() const
{
    QStringList ids;
    ids.reserve(isolatedNodes.size());
    for (const Node &node : isolatedNodes) {
        ids.append(node.id);
    }
    return ids;
}

int Graph::readyCount() const
{
    return countReadiness(nodes, Readiness::Ready);
}

int Graph::blockedCount() const
{
    return countReadiness(nodes, Readiness::Blocked);
}

QSet<QString> Graph::chain(const QString &id) const
{
    const Walks::Places places(nodes, edges);
    const int start = places.ofKey.value(id.toLower(), -1);
    if (start < 0) {
        return {};
    }
    std::vector<Walks::Arc> upwards = places.arcs;
    std::transform(upwards.begin(), upwards.end(), upwards.begin(), std::mem_fn(&Walks::Arc::reversed));
    const int count = static_cast<int>(nodes.size());
    const std::vector<bool> below = Walks::reached(Walks::Adjacency(count, places.arcs), start);
    const std::vector<bool> above = Walks::reached(Walks::Adjacency(count, upwards), start);
    QSet<QString> keys;
    for (size_t place = 0; place < below.size(); ++place) {
        if (below[place] || above[place]) {
            keys.insert(nodes[static_cast<qsizetype>(place)].key);
        }
    }
    return keys;
}

Graph scoped(const Graph &graph, const QString &milestone)
{
    if (milestone.isEmpty()) {
        return graph;
    }
    const auto belongs = [&milestone](const Node &node) { return node.milestone == milestone; };
    if (std::none_of(graph.nodes.begin(), graph.nodes.end(), belongs)) {
        return graph;
    }
    const Walks::Places places(graph.nodes, graph.edges);
    std::vector<bool> base;
    base.reserve(static_cast<size_t>(graph.nodes.size()));
    std::transform(graph.nodes.begin(), graph.nodes.end(), std::back_inserter(base), belongs);
    std::vector<bool> shown = base;
    for (const Walks::Arc &arc : places.arcs) {
        if (arc.isKnown() && (base[static_cast<size_t>(arc.from)] || base[static_cast<size_t>(arc.to)])) {
            shown[static_cast<size_t>(arc.from)] = shown[static_cast<size_t>(arc.to)] = true;
        }
    }

    Graph result {
        .problems = graph.problems, .isolatedNodes = graph.isolatedNodes, .milestones = graph.milestones};
    for (size_t place = 0; place < shown.size(); ++place) {
        if (shown[place]) {
            result.nodes.append(graph.nodes[static_cast<qsizetype>(place)]);
            result.nodes.last().context = !base[place];
        }
    }
    for (size_t edge = 0; edge < places.arcs.size(); ++edge) {
        const Walks::Arc &arc = places.arcs[edge];
        if (arc.isKnown() && shown[static_cast<size_t>(arc.from)] && shown[static_cast<size_t>(arc.to)]) {
            result.edges.append(graph.edges[static_cast<qsizetype>(edge)]);
        }
    }

    Walks::Adjacency children(static_cast<int>(result.nodes.size()),
                              Walks::Places(result.nodes, result.edges).arcs);
    children.sortChildren(Walks::ranks(result.nodes));
    for (size_t place = 0; const int depth : Walks::depths(children)) {
        result.nodes[static_cast<qsizetype>(place++)].depth = depth;
    }
    return result;
}

} // namespace Vesk::IssueGraph
