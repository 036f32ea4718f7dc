#include "issues/IssueCells.h"
#include "issues/IssueGraphWalks_p.h"

#include <algorithm>
#include <array>

namespace Vesk::IssueGraph
{
namespace
{

using Walks::Arc;

/** One pair of issues, whoever wrote it down. */
struct Declared {
    Arc arc {};
    bool struck = false;
    bool byBlocked = false;
    bool byBlocker = false;
};

/** A graph in the making. Nodes are known by their places in the order in which they were first seen. */
class GraphBuild
{
public:
    explicit GraphBuild(const QList<Input> &inputs)
        : m_inputs(inputs)
    {
    }

    void addFiles();
    void addRows(const QList<BoardRow> &rows);
    void readDeclarations();
    [[nodiscard]] Graph finish(const QStringList &milestoneOrder);

private:
    [[nodiscard]] const Input &inputOf(int place) const { return *m_nodeInputs[static_cast<size_t>(place)]; }
    void readCell(int place, const QList<IssueDocument::Ref> &refs, bool isBlockedBy);
    void note(Arc arc, bool struck, bool byBlocked);
    void makeEdges();
    void weighNodes();
    void findCycles();
    void sortProblems();
    [[nodiscard]] QStringList milestones(const QStringList &milestoneOrder) const;

    const QList<Input> &m_inputs;
    QList<Node> m_nodes;
    QHash<QString, int> m_places;
    std::vector<const Input *> m_nodeInputs; // of the nodes with a file: they stand first
    std::vector<Declared> m_declared;
    QHash<std::pair<int, int>, size_t> m_declaredPlaces;
    std::vector<Arc> m_arcs; // of the edges
    Graph m_graph;
};

void GraphBuild::addFiles()
{
    QHash<int, int> copies;
    for (const Input &input : m_inputs) {
        const QString key = input.id.toLower();
        if (key.isEmpty()) {
            continue;
        }
        if (const auto known = m_places.constFind(key); known != m_places.constEnd()) {
            ++copies[*known];
            continue;
        }
        m_places.insert(key, static_cast<int>(m_nodes.size()));
        m_nodeInputs.push_back(&input);
        m_nodes.append({.id = input.id,
                        .key = key,
                        .title = input.title,
                        .status = IssueStatus::parse(input.status),
                        .milestone = IssueCells::cutMilestone(input.milestone)});
    }
    for (auto copy = copies.cbegin(); copy != copies.cend(); ++copy) {
        m_graph.problems.append({Duplicate {.id = m_nodes[copy.key()].id, .count = copy.value() + 1}});
    }
}

void GraphBuild::addRows(const QList<BoardRow> &rows)
{
    for (const BoardRow &row : rows) {
        const QString key = row.id.toLower();
        if (key.isEmpty() || m_places.contains(key)) {
            continue;
        }
        m_places.insert(key, static_cast<int>(m_nodes.size()));
        m_nodes.append({.id = row.id,
                        .key = key,
                        .title = row.title.isEmpty() ? row.id : row.title,
                        .status = IssueStatus::parse(row.status),
                        .milestone = IssueCells::cutMilestone(row.milestone),
                        .kind = Kind::BoardOnly});
    }
}

void GraphBuild::readDeclarations()
{
    for (size_t place = 0; place < m_nodeInputs.size(); ++place) {
        readCell(static_cast<int>(place), m_nodeInputs[place]->blockedBy, true);
        readCell(static_cast<int>(place), m_nodeInputs[place]->blocks, false);
    }
}

void GraphBuild::readCell(int place, const QList<IssueDocument::Ref> &refs, bool isBlockedBy)
{
    const Input &input = inputOf(place);
    const QString &cell = isBlockedBy ? input.blockedByKey : input.blocksKey;
    for (const IssueDocument::Ref &ref : refs) {
        const int other = m_places.value(ref.id.toLower(), -1);
        if (other == place) {
            m_graph.problems.append({SelfReference {.id = input.id, .key = cell}});
        } else if (other < 0) {
            m_graph.problems.append({Missing {.from = input.id, .key = cell, .ref = ref.id}});
        } else if (isBlockedBy) {
            note({.from = other, .to = place}, ref.struck, true);
        } else {
            note({.from = place, .to = other}, ref.struck, false);
        }
    }
}

void GraphBuild::note(Arc arc, bool struck, bool byBlocked)
{
    const size_t place = m_declaredPlaces.value({arc.from, arc.to}, m_declared.size());
    if (place == m_declared.size()) {
        m_declaredPlaces.insert({arc.from, arc.to}, place);
        m_declared.push_back({.arc = arc});
    }
    Declared &declared = m_declared[place];
    declared.struck |= struck;
    (byBlocked ? declared.byBlocked : declared.byBlocker) = true;
}

void GraphBuild::makeEdges()
{
    m_graph.edges.reserve(static_cast<qsizetype>(m_declared.size()));
    m_arcs.reserve(m_declared.size());
    for (const Declared &declared : m_declared) {
        const Node &from = m_nodes[declared.arc.from];
        const Node &to = m_nodes[declared.arc.to];
        m_arcs.push_back(declared.arc);
        m_graph.edges.append({.from = from.key,
                              .to = to.key,
                              .struck = declared.struck,
                              .resolved = declared.struck || from.status.isTerminal(),
                              .declaredByBlocked = declared.byBlocked,
                              .declaredByBlocker = declared.byBlocker});
        if (from.kind == Kind::BoardOnly || to.kind == Kind::BoardOnly
            || declared.byBlocked == declared.byBlocker) {
            continue;
        }
        OneSided one {.from = from.id, .to = to.id};
        if (declared.byBlocked) {
            one.missingIn = from.id;
            one.missingInKey = inputOf(declared.arc.from).blocksKey;
        } else {
            one.missingIn = to.id;
            one.missingInKey = inputOf(declared.arc.to).blockedByKey;
        }
        m_graph.problems.append({one});
    }
}

void GraphBuild::weighNodes()
{
    const int count = static_cast<int>(m_nodes.size());
    std::vector<Arc> open;
    for (size_t edge = 0; edge < m_arcs.size(); ++edge) {
        if (!m_graph.edges[static_cast<qsizetype>(edge)].resolved) {
            open.push_back(m_arcs[edge]);
            m_nodes[m_arcs[edge].to].unresolved.append(m_nodes[m_arcs[edge].from].id);
            ++m_nodes[m_arcs[edge].from].blocking;
        }
    }
    const std::vector<int> downstream = Walks::reachCounts(Walks::Adjacency(count, open));
    Walks::Adjacency sorted(count, m_arcs);
    sorted.sortChildren(Walks::ranks(m_nodes));
    const std::vector<int> depths = Walks::depths(sorted);
    for (size_t place = 0; Node & node : m_nodes) {
        node.downstream = downstream[place];
        node.depth = depths[place++];
        if (node.status.isTerminal()) {
            node.readiness = Readiness::Settled;
        } else if (!node.unresolved.isEmpty()) {
            node.readiness = Readiness::Blocked;
        }
    }
}

void GraphBuild::findCycles()
{
    const Walks::Adjacency children(static_cast<int>(m_nodes.size()), m_arcs);
    for (const std::vector<int> &cycle : Walks::cycles(children)) {
        Cycle problem;
        problem.ids.reserve(static_cast<qsizetype>(cycle.size()));
        for (const int place : cycle) {
            problem.ids.append(m_nodes[place].id);
        }
        m_graph.problems.append({problem});
    }
}

void GraphBuild::sortProblems()
{
    constexpr std::array ranks {0, 1, 3, 4, 2}; // of the kinds in the order of the variant
    static_assert(ranks.size() == std::variant_size_v<decltype(Problem::what)>);
    struct Keyed {
        int rank;
        QString id;
        Problem problem;
    };
    std::vector<Keyed> keyed;
    keyed.reserve(static_cast<size_t>(m_graph.problems.size()));
    for (const Problem &problem : std::as_const(m_graph.problems)) {
        keyed.push_back({ranks.at(problem.what.index()), problem.id(), problem});
    }
    std::stable_sort(keyed.begin(), keyed.end(), [](const Keyed &left, const Keyed &right) {
        return left.rank != right.rank ? left.rank < right.rank : left.id < right.id;
    });
    m_graph.problems.clear();
    for (Keyed &one : keyed) {
        m_graph.problems.append(std::move(one.problem));
    }
}

QStringList GraphBuild::milestones(const QStringList &milestoneOrder) const
{
    QSet<QString> used;
    for (const Node &node : m_nodes) {
        if (!node.milestone.isEmpty()) {
            used.insert(node.milestone);
        }
    }
    QStringList names;
    for (const QString &written : milestoneOrder) {
        const QString name = IssueCells::cutMilestone(written);
        if (used.remove(name)) {
            names.append(name);
        }
    }
    QStringList others = used.values();
    others.sort();
    return names + others;
}

Graph GraphBuild::finish(const QStringList &milestoneOrder)
{
    makeEdges();
    weighNodes();
    findCycles();
    sortProblems();
    m_graph.milestones = milestones(milestoneOrder);
    std::vector<bool> connected(static_cast<size_t>(m_nodes.size()), false);
    for (const Arc &arc : m_arcs) {
        connected[static_cast<size_t>(arc.from)] = connected[static_cast<size_t>(arc.to)] = true;
    }
    for (size_t place = 0; Node & node : m_nodes) {
        (connected[place++] ? m_graph.nodes : m_graph.isolatedNodes).append(std::move(node));
    }
    return std::move(m_graph);
}

} // namespace

Graph build(const QList<Input> &inputs, const QList<BoardRow> &boardRows, const QStringList &milestoneOrder)
{
    GraphBuild build(inputs);
    build.addFiles();
    build.addRows(boardRows);
    build.readDeclarations();
    return build.finish(milestoneOrder);
}

} // namespace Vesk::IssueGraph
