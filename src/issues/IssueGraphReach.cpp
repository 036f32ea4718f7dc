// How much each node holds up. Asking node by node would cost the square of the graph; here a set of bits
// is handed from the blocked to the blockers, once for all of a loop.
#include "issues/IssueGraphWalks_p.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <functional>

namespace Vesk::IssueGraph::Walks
{
namespace
{

/** Nodes that reach each other belong together. A component is numbered after all that it leads to. */
struct Components {
    std::vector<int> ofNode;
    std::vector<int> nodes;  ///< component by component
    std::vector<int> starts; ///< in `nodes`, with one for the end
};

// Tarjan's walk with a stack of its own.
class ComponentWalk
{
public:
    explicit ComponentWalk(const Adjacency &children)
        : m_children(children)
        , m_seen(static_cast<size_t>(children.nodeCount()), 0)
        , m_low(m_seen.size(), 0)
    {
        m_result.ofNode.assign(m_seen.size(), -1);
        m_result.starts.push_back(0);
    }

    Components run()
    {
        for (int root = 0; root < m_children.nodeCount(); ++root) {
            if (m_seen[static_cast<size_t>(root)] == 0) {
                walkFrom(root);
            }
        }
        return std::move(m_result);
    }

private:
    struct Visit {
        int node;
        int nextSlot;
    };

    void enter(int node)
    {
        m_seen[static_cast<size_t>(node)] = m_low[static_cast<size_t>(node)] = ++m_clock;
        m_open.push_back(node);
        m_path.push_back({.node = node, .nextSlot = m_children.firstSlot(node)});
    }

    void walkFrom(int root)
    {
        enter(root);
        while (!m_path.empty()) {
            Visit &visit = m_path.back();
            const auto node = static_cast<size_t>(visit.node);
            if (visit.nextSlot == m_children.firstSlot(visit.node + 1)) {
                leave(visit.node);
                continue;
            }
            const int child = m_children.child(visit.nextSlot++);
            const auto place = static_cast<size_t>(child);
            if (m_seen[place] == 0) {
                enter(child);
            } else if (m_result.ofNode[place] < 0) {
                m_low[node] = std::min(m_low[node], m_seen[place]);
            }
        }
    }

    void leave(int node)
    {
        const auto place = static_cast<size_t>(node);
        m_path.pop_back();
        if (!m_path.empty()) {
            int &parentLow = m_low[static_cast<size_t>(m_path.back().node)];
            parentLow = std::min(parentLow, m_low[place]);
        }
        if (m_low[place] != m_seen[place]) {
            return;
        }
        const int component = static_cast<int>(m_result.starts.size()) - 1;
        int member = -1;
        do {
            member = m_open.back();
            m_open.pop_back();
            m_result.ofNode[static_cast<size_t>(member)] = component;
            m_result.nodes.push_back(member);
        } while (member != node);
        m_result.starts.push_back(static_cast<int>(m_result.nodes.size()));
    }

    const Adjacency &m_children;
    std::vector<int> m_seen; // when, from 1; 0 for not yet
    std::vector<int> m_low;  // the earliest node known to be reachable and open
    int m_clock = 0;
    std::vector<int> m_open;
    std::vector<Visit> m_path;
    Components m_result;
};

} // namespace

std::vector<int> reachCounts(const Adjacency &children)
{
    using Word = std::uint64_t;
    constexpr size_t wordBits = 64;
    constexpr size_t mostWords = 64; // a round's worth: the sets stay small however large the graph is

    const Components components = ComponentWalk(children).run();
    const auto nodeCount = static_cast<size_t>(children.nodeCount());
    const size_t componentCount = components.starts.size() - 1;
    const size_t words = std::min(mostWords, (nodeCount + wordBits - 1) / wordBits);
    std::vector<int> counts(componentCount, 0);
    std::vector<Word> sets(componentCount * words);
    for (size_t first = 0; first < nodeCount; first += words * wordBits) {
        std::fill(sets.begin(), sets.end(), 0);
        for (size_t node = first; node < std::min(nodeCount, first + words * wordBits); ++node) {
            const size_t bit = node - first;
            sets[static_cast<size_t>(components.ofNode[node]) * words + bit / wordBits] |= Word {1}
                << bit % wordBits;
        }
        for (size_t component = 0; component < componentCount; ++component) {
            Word *const set = sets.data() + component * words;
            for (auto at = static_cast<size_t>(components.starts[component]);
                 at < static_cast<size_t>(components.starts[component + 1]); ++at) {
                for (const int child : children.children(components.nodes[at])) {
                    const auto other = static_cast<size_t>(components.ofNode[static_cast<size_t>(child)]);
                    const Word *const below = sets.data() + other * words;
                    std::transform(set, set + words, below, set, std::bit_or<>());
                }
            }
            for (size_t word = 0; word < words; ++word) {
                counts[component] += std::popcount(set[word]);
            }
        }
    }
    std::vector<int> result(nodeCount);
    for (size_t node = 0; node < nodeCount; ++node) {
        result[node] = counts[static_cast<size_t>(components.ofNode[node])] - 1; // itself
    }
    return result;
}

} // namespace Vesk::IssueGraph::Walks
