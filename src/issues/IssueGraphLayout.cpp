#include "issues/IssueGraphLayout.h"

#include "issues/IssueGraphWalks_p.h"

#include <algorithm>

namespace Vesk::IssueGraph
{
namespace
{

using Walks::Arc;

/** What stands in a column: a card, or the lane of a long link that passes. */
struct Slot {
    int column = 0;
    int node = -1; ///< absent for a lane
};

/** A layout in the making. Slots are known by their numbers; those of cards are the places of their nodes. */
class LayeredPicture
{
public:
    explicit LayeredPicture(const Graph &graph)
        : m_graph(graph)
        , m_places(graph.nodes, graph.edges)
    {
    }

    Layout draw()
    {
        placeCards();
        placeLanes();
        for (int sweep = 0; sweep < sweeps; ++sweep) {
            reduceCrossings(sweep % 2 == 0);
        }
        Layout result;
        placeFrames(result);
        drawLinks(result);
        return result;
    }

private:
    static constexpr int sweeps = 4;

    [[nodiscard]] int columnCount() const { return static_cast<int>(m_columns.size()); }
    [[nodiscard]] int columnOf(int slot) const { return m_slots[static_cast<size_t>(slot)].column; }
    [[nodiscard]] bool isForward(const Arc &arc) const { return columnOf(arc.from) < columnOf(arc.to); }

    void placeCards();
    void placeLanes();
    void reduceCrossings(bool rightwards);
    void sortColumn(std::vector<int> &column, const Walks::Adjacency &neighbours);
    void placeFrames(Layout &result);
    void drawLinks(Layout &result) const;

    const Graph &m_graph;
    const Walks::Places m_places;
    std::vector<Slot> m_slots;
    std::vector<std::vector<int>> m_columns; // slots from the top
    std::vector<int> m_firstLanes;           // of each edge; its lanes follow each other, column by column
    Walks::Adjacency m_below {0, {}};        // neighbours in the column to the right
    Walks::Adjacency m_above {0, {}};        // and to the left
    std::vector<int> m_indices;              // of the slots in their columns
    std::vector<double> m_heights;           // of cards: their top; of lanes: their line
};

void LayeredPicture::placeCards()
{
    std::vector<int> depths;
    depths.reserve(static_cast<size_t>(m_graph.nodes.size()));
    std::transform(m_graph.nodes.begin(), m_graph.nodes.end(), std::back_inserter(depths),
                   std::mem_fn(&Node::depth));
    std::sort(depths.begin(), depths.end());
    depths.erase(std::unique(depths.begin(), depths.end()), depths.end());
    m_columns.resize(depths.size());
    for (int place = 0; const Node &node : m_graph.nodes) {
        const auto column = std::lower_bound(depths.begin(), depths.end(), node.depth) - depths.begin();
        m_slots.push_back({.column = static_cast<int>(column), .node = place++});
    }
    // Cards stand in the order of their keys at first.
    const std::vector<int> ranks = Walks::ranks(m_graph.nodes);
    std::vector<int> sorted(ranks.size());
    for (size_t place = 0; place < ranks.size(); ++place) {
        sorted[static_cast<size_t>(ranks[place])] = static_cast<int>(place);
    }
    for (const int place : sorted) {
        m_columns[static_cast<size_t>(columnOf(place))].push_back(place);
    }
}

void LayeredPicture::placeLanes()
{
    std::vector<Arc> steps; // between slots in columns that lie side by side
    m_firstLanes.reserve(m_places.arcs.size());
    for (const Arc &arc : m_places.arcs) {
        m_firstLanes.push_back(static_cast<int>(m_slots.size()));
        if (!arc.isKnown() || !isForward(arc)) {
            continue;
        }
        int before = arc.from;
        for (int column = columnOf(arc.from) + 1; column < columnOf(arc.to); ++column) {
            const int lane = static_cast<int>(m_slots.size());
            m_slots.push_back({.column = column});
            m_columns[static_cast<size_t>(column)].push_back(lane);
            steps.push_back({.from = before, .to = lane});
            before = lane;
        }
        steps.push_back({.from = before, .to = arc.to});
    }
    const int slotCount = static_cast<int>(m_slots.size());
    m_below = Walks::Adjacency(slotCount, steps);
    std::transform(steps.begin(), steps.end(), steps.begin(), std::mem_fn(&Arc::reversed));
    m_above = Walks::Adjacency(slotCount, steps);
    m_indices.resize(m_slots.size());
    m_heights.resize(m_slots.size());
    for (const std::vector<int> &column : m_columns) {
        for (int index = 0; const int slot : column) {
            m_indices[static_cast<size_t>(slot)] = index++;
        }
    }
}

void LayeredPicture::reduceCrossings(bool rightwards)
{
    const int last = columnCount() - 1;
    for (int step = 1; step <= last; ++step) {
        const int column = rightwards ? step : last - step;
        sortColumn(m_columns[static_cast<size_t>(column)], rightwards ? m_above : m_below);
    }
}

void LayeredPicture::sortColumn(std::vector<int> &column, const Walks::Adjacency &neighbours)
{
    struct Weighed {
        double weight;
        int slot;
    };
    std::vector<Weighed> weighed;
    weighed.reserve(column.size());
    for (const int slot : column) {
        const auto others = neighbours.children(slot);
        double sum = 0;
        for (const int other : others) {
            sum += m_indices[static_cast<size_t>(other)];
        }
        const double weight =
            others.empty() ? m_indices[static_cast<size_t>(slot)] : sum / static_cast<double>(others.size());
        weighed.push_back({weight, slot});
    }
    std::stable_sort(weighed.begin(), weighed.end(),
                     [](const Weighed &left, const Weighed &right) { return left.weight < right.weight; });
    for (size_t index = 0; index < weighed.size(); ++index) {
        column[index] = weighed[index].slot;
        m_indices[static_cast<size_t>(column[index])] = static_cast<int>(index);
    }
}

void LayeredPicture::placeFrames(Layout &result)
{
    using namespace Measures;
    result.placements.reserve(m_graph.nodes.size());
    double lowest = 0;
    double x = margin;
    for (int column = 0; column < columnCount(); ++column, x += columnPitch) {
        double y = margin;
        int row = 0;
        for (const int place : m_columns[static_cast<size_t>(column)]) {
            const Slot &slot = m_slots[static_cast<size_t>(place)];
            double &height = m_heights[static_cast<size_t>(place)];
            if (slot.node < 0) {
                height = y + laneMiddle;
                y += lanePitch;
                continue;
            }
            height = y;
            result.placements.append({.node = m_graph.nodes[slot.node],
                                      .column = column,
                                      .row = row++,
                                      .frame = {x, y, cardWidth, cardHeight}});
            y += cardPitch;
        }
        lowest = std::max(lowest, y);
    }
    result.size = {columnCount() * columnPitch - columnGap + 2 * margin,
                   std::max(lowest - cardGap, margin) + margin};
}

void LayeredPicture::drawLinks(Layout &result) const
{
    using namespace Measures;
    const auto left = [this](int slot) { return columnOf(slot) * columnPitch + margin; };
    const auto cardMiddle = [this](int slot) {
        return m_heights[static_cast<size_t>(slot)] + cardHeight / 2;
    };
    result.links.reserve(m_graph.edges.size());
    for (size_t index = 0; index < m_places.arcs.size(); ++index) {
        const Arc &arc = m_places.arcs[index];
        if (!arc.isKnown()) {
            continue;
        }
        const Edge &edge = m_graph.edges[static_cast<qsizetype>(index)];
        Link link {.from = edge.from,
                   .to = edge.to,
                   .resolved = edge.resolved,
                   .struck = edge.struck,
                   .backward = !isForward(arc)};
        link.points.append({left(arc.from) + cardWidth, cardMiddle(arc.from)});
        if (link.backward) {
            link.points.append({left(arc.to) + cardWidth, cardMiddle(arc.to)});
        } else {
            int lane = m_firstLanes[index];
            for (int column = columnOf(arc.from) + 1; column < columnOf(arc.to); ++column, ++lane) {
                link.points.append({left(lane) + cardWidth / 2, m_heights[static_cast<size_t>(lane)]});
            }
            link.points.append({left(arc.to), cardMiddle(arc.to)});
        }
        result.links.append(std::move(link));
    }
}

} // namespace

Layout layout(const Graph &graph)
{
    return graph.nodes.isEmpty() ? Layout {} : LayeredPicture(graph).draw();
}

} // namespace Vesk::IssueGraph
