// What stands in the list of an issue window.
#pragma once

#include "issues/IssueGraph.h"
#include "issues/IssueGrouping.h"
#include "issues/IssueStatus.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace Vesk
{

/** What of a folder is listed. */
struct IssueListChoice {
    QString query;                     ///< as typed
    std::optional<IssueStatus> status; ///< absent for all
    QSet<QString> foldedGroups;        ///< milestones by their short names
    QSet<QString> openSettled;         ///< those whose settled issues are shown
};

/** One row: the head of a group, an issue, a row of the board without a file, or a group's settled issues. */
struct IssueListRow {
    enum class Kind { Group, Issue, BoardOnly, Settled };
    /** What the words at its right mean. */
    enum class Tone { Plain, Ready, Waiting, Blocked };

    Kind kind = Kind::Issue;
    QString key; ///< of the row, the same after a reload
    QString path {};
    QString group {};
    QString id {};
    QString title {};
    QString meta {}; ///< area, priority, estimate
    IssueStatus status {};
    QString ending {}; ///< at the right
    Tone tone = Tone::Plain;
    int done = 0; ///< settled ones of a group
    int total = 0;
    bool folded = false;
    QString unreadable {}; ///< why the file could not be read

    bool operator==(const IssueListRow &) const = default;
};

namespace IssueListRows
{

/** The rows of a folder. While something is looked for, or one status is chosen, nothing that fits is folded
    away. */
[[nodiscard]] QList<IssueListRow> of(const QList<IssueGroup> &groups, const IssueGraph::Graph &graph,
                                     const IssueListChoice &choice);

/** The statuses that issues and rows of the board have, in the order of their kinds, with how many have it.
 */
[[nodiscard]] QList<std::pair<IssueStatus, int>> statuses(const QList<IssueGroup> &groups);

/** "선행 2", "3/5", "지금 가능": how things stand with an issue, and what it means. */
[[nodiscard]] std::pair<QString, IssueListRow::Tone>
ending(const IssueStatus &status, const IssueDocument::Progress &progress, const IssueGraph::Node *node);

} // namespace IssueListRows

} // namespace Vesk
