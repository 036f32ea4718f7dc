#include "issues/IssueGraphMemo.h"

namespace Vesk
{

std::shared_ptr<const IssueGraphMemo::Prepared> IssueGraphMemo::prepared(const IssueGraph::Graph &graph,
                                                                         const QString &milestone)
{
    if (!m_prepared || m_milestone != milestone || m_graph != graph) {
        Prepared made {.scoped = IssueGraph::scoped(graph, milestone), .layout = {}};
        made.layout = IssueGraph::layout(made.scoped);
        m_prepared = std::make_shared<const Prepared>(std::move(made));
        m_graph = graph;
        m_milestone = milestone;
        m_chainFor.reset();
        m_chain.reset();
    }
    return m_prepared;
}

std::optional<QSet<QString>> IssueGraphMemo::chain(const IssueGraph::Graph &scoped,
                                                   const std::optional<QString> &key)
{
    if (!key) {
        return std::nullopt;
    }
    if (m_chainFor != key) {
        QSet<QString> keys = scoped.chain(*key);
        m_chainFor = key;
        m_chain = keys.isEmpty() ? std::nullopt : std::optional(std::move(keys));
    }
    return m_chain;
}

std::shared_ptr<const IssueKanban::Board> IssueGraphMemo::isolatedBoard(const IssueGraph::Graph &graph)
{
    if (!m_board || m_boardGraph != graph) {
        m_board = std::make_shared<const IssueKanban::Board>(IssueKanban::board(graph.isolatedNodes));
        m_boardGraph = graph;
    }
    return m_board;
}

} // namespace Vesk
