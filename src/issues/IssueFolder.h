// What lies in an issue folder.
#pragma once

#include "base/Result.h"

#include <QString>
#include <QStringList>

namespace Vesk::IssueFolder
{

struct Listing {
    QString board;      ///< path; empty when there is none
    QString readme;     ///< the same
    QStringList issues; ///< paths of all other Markdown files
};

/** The visible Markdown files right in the folder, sorted by name. NotFound when it is no folder, Unreadable
    when it cannot be listed. */
[[nodiscard]] Result<Listing> list(const QString &folder);

/** Whether this path names an issue of the folder: neither its board nor its rules. Looks at no disk. */
[[nodiscard]] bool isIssuePath(const QString &path, const QString &folder);

} // namespace Vesk::IssueFolder
