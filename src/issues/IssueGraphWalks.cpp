#include "issues/IssueGraphWalks_p.h"

#include <algorithm>
#include <numeric>

namespace Vesk::IssueGraph::Walks
{
namespace
{

/** A node on the path of a walk, and the slot of the child to visit next. */
struct Step {
    int node;
    int nextSlot;
};

/** Goes depth first through all nodes. `onBack(slot, path, place)` is told of each arc that leads back to a
    node of the path, the one at `place`. */
template <typename OnBack>
void walkDepthFirst(const Adjacency &children, OnBack onBack)
{
    constexpr int unseen = -1;
    constexpr int finished = -2;
    std::vector<int> places(static_cast<size_t>(children.nodeCount()), unseen); // on the path
    std::vector<Step> path;
    const auto enter = [&](int node) {
        places[static_cast<size_t>(node)] = static_cast<int>(path.size());
        path.push_back({.node = node, .nextSlot = children.firstSlot(node)});
    };
    for (int root = 0; root < children.nodeCount(); ++root) {
        if (places[static_cast<size_t>(root)] != unseen) {
            continue;
        }
        enter(root);
        while (!path.empty()) {
            Step &step = path.back();
            if (step.nextSlot == children.firstSlot(step.node + 1)) {
                places[static_cast<size_t>(step.node)] = finished;
                path.pop_back();
                continue;
            }
            const int slot = step.nextSlot++;
            const int place = places[static_cast<size_t>(children.child(slot))];
            if (place == unseen) {
                enter(children.child(slot));
            } else if (place >= 0) {
                onBack(slot, path, place);
            }
        }
    }
}

} // namespace

Places::Places(const QList<Node> &nodes, const QList<Edge> &edges)
{
    ofKey.reserve(nodes.size());
    for (int place = 0; const Node &node : nodes) {
        ofKey.insert(node.key, place++);
    }
    arcs.reserve(static_cast<size_t>(edges.size()));
    for (const Edge &edge : edges) {
        arcs.push_back({.from = ofKey.value(edge.from, -1), .to = ofKey.value(edge.to, -1)});
    }
}

Adjacency::Adjacency(int nodeCount, const std::vector<Arc> &arcs)
    : m_starts(static_cast<size_t>(nodeCount) + 1, 0)
{
    for (const Arc &arc : arcs) {
        if (arc.isKnown()) {
            ++m_starts[static_cast<size_t>(arc.from) + 1];
        }
    }
    std::partial_sum(m_starts.begin(), m_starts.end(), m_starts.begin());
    m_children.resize(static_cast<size_t>(m_starts.back()));
    std::vector<int> next(m_starts.begin(), m_starts.end() - 1);
    for (const Arc &arc : arcs) {
        if (arc.isKnown()) {
            m_children[static_cast<size_t>(next[static_cast<size_t>(arc.from)]++)] = arc.to;
        }
    }
}

void Adjacency::sortChildren(const std::vector<int> &ranks)
{
    for (int node = 0; node < nodeCount(); ++node) {
        std::sort(m_children.begin() + firstSlot(node), m_children.begin() + firstSlot(node + 1),
                  [&ranks](int left, int right) {
                      return ranks[static_cast<size_t>(left)] < ranks[static_cast<size_t>(right)];
                  });
    }
}

std::vector<int> ranks(const QList<Node> &nodes)
{
    std::vector<int> sorted(static_cast<size_t>(nodes.size()));
    std::iota(sorted.begin(), sorted.end(), 0);
    std::sort(sorted.begin(), sorted.end(),
              [&nodes](int left, int right) { return nodes[left].key < nodes[right].key; });
    std::vector<int> ranks(sorted.size());
    for (int rank = 0; const int node : sorted) {
        ranks[static_cast<size_t>(node)] = rank++;
    }
    return ranks;
}

std::vector<int> depths(const Adjacency &children)
{
    // Without the arcs that lead back no loop is left, so that every node's turn comes.
    std::vector<bool> leadsBack(static_cast<size_t>(children.slotCount()), false);
    walkDepthFirst(children, [&leadsBack](int slot, const std::vector<Step> &, int) {
        leadsBack[static_cast<size_t>(slot)] = true;
    });
    const auto nodeCount = static_cast<size_t>(children.nodeCount());
    std::vector<int> awaited(nodeCount, 0);
    for (int slot = 0; slot < children.slotCount(); ++slot) {
        awaited[static_cast<size_t>(children.child(slot))] += leadsBack[static_cast<size_t>(slot)] ? 0 : 1;
    }
    std::vector<int> queue;
    queue.reserve(nodeCount);
    for (size_t node = 0; node < nodeCount; ++node) {
        if (awaited[node] == 0) {
            queue.push_back(static_cast<int>(node));
        }
    }
    std::vector<int> depths(nodeCount, 0);
    for (size_t at = 0; at < queue.size(); ++at) {
        const int node = queue[at];
        for (int slot = children.firstSlot(node); slot < children.firstSlot(node + 1); ++slot) {
            if (leadsBack[static_cast<size_t>(slot)]) {
                continue;
            }
            const auto child = static_cast<size_t>(children.child(slot));
            depths[child] = std::max(depths[child], depths[static_cast<size_t>(node)] + 1);
            if (--awaited[child] == 0) {
                queue.push_back(static_cast<int>(child));
            }
        }
    }
    return depths;
}

std::vector<std::vector<int>> cycles(const Adjacency &children)
{
    // Each loop holds exactly one arc that leads back, and the walk goes over each arc once: no loop comes
    // twice.
    std::vector<std::vector<int>> found;
    walkDepthFirst(children, [&found](int, const std::vector<Step> &path, int place) {
        std::vector<int> &cycle = found.emplace_back();
        cycle.reserve(path.size() - static_cast<size_t>(place));
        std::transform(path.begin() + place, path.end(), std::back_inserter(cycle),
                       [](const Step &step) { return step.node; });
    });
    return found;
}

std::vector<bool> reached(const Adjacency &children, int start)
{
    std::vector<bool> seen(static_cast<size_t>(children.nodeCount()), false);
    std::vector<int> waiting {start};
    while (!waiting.empty()) {
        const int node = waiting.back();
        waiting.pop_back();
        if (seen[static_cast<size_t>(node)]) {
            continue;
        }
        seen[static_cast<size_t>(node)] = true;
        const auto next = children.children(node);
        waiting.insert(waiting.end(), next.begin(), next.end());
    }
    return seen;
}

} // namespace Vesk::IssueGraph::Walks
