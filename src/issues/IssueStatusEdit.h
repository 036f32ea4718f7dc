// Setting the status of an issue that is not open in an editor.
#pragma once

#include "issues/IssueDesk.h"
#include "issues/IssueStatus.h"

#include <QString>

#include <optional>

namespace Vesk::IssueStatusEdit
{

/** What was done to a file, as much as is needed to take it back. */
struct Change {
    QString path;
    QString key;                   ///< of the status row
    std::optional<QString> before; ///< the cell as it was; absent when there was no such row
    QString after;                 ///< the cell as it is now
};

struct Outcome {
    std::optional<Change> change; ///< absent when nothing was written
    QString problem;              ///< for the person; empty when the file says what was asked for
};

/** Rewrites the status cell in the file, keeping its style and note, reloads, and brings the board's counts
    and status cells along. */
[[nodiscard]] Outcome setStatus(const IssueDesk &desk, const QString &path, const IssueStatus &status);

/** Puts the cell back as it was, the same way; a problem when the cell has been changed since. */
[[nodiscard]] Outcome undo(const IssueDesk &desk, const Change &change);

} // namespace Vesk::IssueStatusEdit
