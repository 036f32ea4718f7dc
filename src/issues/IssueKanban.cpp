#include "issues/IssueKanban.h"

#include "base/Text.h"

#include <QHash>

#include <algorithm>

namespace Vesk::IssueKanban
{
namespace
{

bool standsBefore(const Column &left, const Column &right)
{
    if (left.status.kind != right.status.kind) {
        return left.status.kind < right.status.kind;
    }
    return Text::compareNames(left.status.other, right.status.other) < 0;
}

bool isOf(const Column &column, const IssueStatus &status)
{
    return column.status == status;
}

} // namespace

Board board(const QList<IssueGraph::Node> &nodes)
{
    Board board;
    QHash<IssueStatus, qsizetype> places;
    for (const IssueGraph::Node &node : nodes) {
        const qsizetype place = places.value(node.status, board.columns.size());
        if (place == board.columns.size()) {
            places.insert(node.status, place);
            board.columns.append({.status = node.status});
        }
        board.columns[place].cards.append(node);
    }
    for (Column &column : board.columns) {
        std::stable_sort(column.cards.begin(), column.cards.end(),
                         [](const IssueGraph::Node &left, const IssueGraph::Node &right) {
                             return Text::compareNames(left.id, right.id) < 0;
                         });
    }
    std::stable_sort(board.columns.begin(), board.columns.end(), standsBefore);
    for (const IssueStatus &status : IssueStatus::vocabulary({})) {
        if (!places.contains(status)) {
            board.emptyKnownStatuses.append(status);
        }
    }
    return board;
}

Board Board::filtered(const std::optional<IssueStatus> &status) const
{
    if (!status) {
        return *this;
    }
    Board result;
    std::copy_if(columns.begin(), columns.end(), std::back_inserter(result.columns),
                 [&status](const Column &column) { return isOf(column, *status); });
    return result;
}

QList<IssueGraph::Node> Board::cards(const IssueStatus &status) const
{
    const auto column = std::find_if(columns.begin(), columns.end(),
                                     [&status](const Column &one) { return isOf(one, status); });
    return column == columns.end() ? QList<IssueGraph::Node>() : column->cards;
}

} // namespace Vesk::IssueKanban
