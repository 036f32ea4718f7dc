// Walks over a graph whose nodes are numbers. None of them recurses: a chain may be as long as it likes.
#pragma once

#include "issues/IssueGraph.h"

#include <QHash>
#include <QString>

#include <span>
#include <vector>

namespace Vesk::IssueGraph::Walks
{

/** From the blocker to the blocked; negative ends are unknown nodes, and such an arc leads nowhere. */
struct Arc {
    int from = -1;
    int to = -1;

    [[nodiscard]] bool isKnown() const { return from >= 0 && to >= 0; }
    [[nodiscard]] Arc reversed() const { return {.from = to, .to = from}; }
};

/** The nodes and edges of a graph as numbers: places in their lists. */
struct Places {
    Places(const QList<Node> &nodes, const QList<Edge> &edges);

    QHash<QString, int> ofKey;
    std::vector<Arc> arcs; ///< one for each edge
};

/** The children of each node, in the order of the arcs. */
class Adjacency
{
public:
    Adjacency(int nodeCount, const std::vector<Arc> &arcs);

    [[nodiscard]] int nodeCount() const { return static_cast<int>(m_starts.size()) - 1; }
    [[nodiscard]] int slotCount() const { return static_cast<int>(m_children.size()); }
    /** A node's children are those of the slots from its first to the first of the next node. */
    [[nodiscard]] int firstSlot(int node) const { return m_starts[static_cast<size_t>(node)]; }
    [[nodiscard]] int child(int slot) const { return m_children[static_cast<size_t>(slot)]; }
    [[nodiscard]] std::span<const int> children(int node) const
    {
        return std::span(m_children)
            .subspan(static_cast<size_t>(firstSlot(node)),
                     static_cast<size_t>(firstSlot(node + 1) - firstSlot(node)));
    }
    /** Puts the children of each node into the order of their ranks. */
    void sortChildren(const std::vector<int> &ranks);

private:
    std::vector<int> m_starts;
    std::vector<int> m_children;
};

/** The place of each key among all of them in plain order. */
[[nodiscard]] std::vector<int> ranks(const QList<Node> &nodes);

/** The longest way from a source to each node, without the arcs that lead back into the walk's own path.
    The children stand in the order of their ranks. */
[[nodiscard]] std::vector<int> depths(const Adjacency &children);

/** The loops that a walk in the order of nodes and children closes, each from where it was entered. */
[[nodiscard]] std::vector<std::vector<int>> cycles(const Adjacency &children);

/** How many other nodes can be reached from each one. */
[[nodiscard]] std::vector<int> reachCounts(const Adjacency &children);

/** Whether each node can be reached from `start`, which itself can. */
[[nodiscard]] std::vector<bool> reached(const Adjacency &children, int start);

} // namespace Vesk::IssueGraph::Walks
