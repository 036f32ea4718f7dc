// The issues of a folder by milestone.
#pragma once

#include "issues/IssueBoard.h"
#include "issues/IssueItem.h"

#include <QList>
#include <QString>

namespace Vesk
{

struct IssueGroup {
    QString key;   ///< the milestone's short name; empty for issues without one
    QString title; ///< for the person
    QList<IssueItem> items;
    QList<IssueBoard::Row> boardOnly; ///< rows of the board without a file
};

namespace IssueGrouping
{

/** Those with something in them: in the board's order, then by name, and at the end what has no milestone. */
[[nodiscard]] QList<IssueGroup> groups(const QList<IssueItem> &items, const IssueBoard::Board &board);

} // namespace IssueGrouping

} // namespace Vesk
