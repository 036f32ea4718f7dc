// What stands on the cards of the kanban, and where keys and the pointer lead among its columns.
#pragma once

#include "issues/IssueKanban.h"
#include "issues/IssueStore.h"
#include "ui/issues/IssueSession.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace Vesk
{

struct KanbanCard {
    QString key; ///< the id in lower case
    QString id;
    QString title;
    IssueStatus status {};
    QString path {}; ///< empty for a row of the board without a file, which cannot be moved
    QString priority {};
    QString meta {}; ///< area and estimate, or what the status wants to have said
    IssueDocument::Progress progress {};
    std::optional<IssueSession> session {};

    bool operator==(const KanbanCard &) const = default;
};

namespace KanbanCards
{

[[nodiscard]] KanbanCard card(const IssueGraph::Node &node, const IssueStore &store);

/** The statuses between which keys move a card: those of the columns and the known ones without a column.
    Never none at all: nobody takes a status away by moving a card. */
[[nodiscard]] QList<IssueStatus> statuses(const IssueKanban::Board &board);

/** The status this many places further; absent beyond the ends. What has no status comes after all. */
[[nodiscard]] std::optional<IssueStatus> shifted(const QList<IssueStatus> &statuses, const IssueStatus &from,
                                                 int by);

/** The card that many columns and rows away; columns without cards are passed over. The same card where none
    is, the first of all for a key that is not there. */
[[nodiscard]] QString neighbour(const QList<QStringList> &columns, const QString &key, int across, int down);

/** All columns equally wide: as much as there is, but neither too narrow for a title nor broader than one. */
[[nodiscard]] double columnWidth(double available, qsizetype count, double gap, double least);

} // namespace KanbanCards

} // namespace Vesk
