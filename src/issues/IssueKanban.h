// The issues without any relation, in columns of their statuses.
#pragma once

#include "issues/IssueGraph.h"

#include <QList>

#include <optional>

namespace Vesk::IssueKanban
{

struct Column {
    IssueStatus status {};
    QList<IssueGraph::Node> cards {}; ///< by number

    bool operator==(const Column &) const = default;
};

struct Board {
    QList<Column> columns;                 ///< the known statuses, then other words, then none
    QList<IssueStatus> emptyKnownStatuses; ///< those of the six that have no column

    bool operator==(const Board &) const = default;

    /** With that status's column alone, if there is one; as it is for no status. */
    [[nodiscard]] Board filtered(const std::optional<IssueStatus> &status) const;
    [[nodiscard]] QList<IssueGraph::Node> cards(const IssueStatus &status) const;
};

[[nodiscard]] Board board(const QList<IssueGraph::Node> &nodes);

} // namespace Vesk::IssueKanban
