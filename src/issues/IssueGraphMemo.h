// What the pictures of a graph cost is paid once: the results are kept until their graph changes.
#pragma once

#include "issues/IssueGraphLayout.h"
#include "issues/IssueKanban.h"

#include <QSet>
#include <QString>

#include <memory>
#include <optional>

namespace Vesk
{

/** Belongs to the one view that shows the pictures. */
class IssueGraphMemo
{
public:
    struct Prepared {
        IssueGraph::Graph scoped;
        IssueGraph::Layout layout;
    };

    /** The graph of a milestone, all of it for an empty one, and its picture. */
    [[nodiscard]] std::shared_ptr<const Prepared> prepared(const IssueGraph::Graph &graph,
                                                           const QString &milestone);

    /** The chain of an issue in the graph prepared last; absent for no issue, and for one that is not in it.
     */
    [[nodiscard]] std::optional<QSet<QString>> chain(const IssueGraph::Graph &scoped,
                                                     const std::optional<QString> &key);

    /** The issues without relations. */
    [[nodiscard]] std::shared_ptr<const IssueKanban::Board> isolatedBoard(const IssueGraph::Graph &graph);

private:
    IssueGraph::Graph m_graph;
    QString m_milestone;
    std::shared_ptr<const Prepared> m_prepared;
    std::optional<QString> m_chainFor;
    std::optional<QSet<QString>> m_chain;
    IssueGraph::Graph m_boardGraph;
    std::shared_ptr<const IssueKanban::Board> m_board;
};

} // namespace Vesk
