// An issue as the tracker lists it.
#pragma once

#include "issues/IssueDocument.h"

#include <QString>

namespace Vesk
{

struct IssueItem {
    QString path; ///< its identity
    IssueDocument doc;
    QString unreadable {}; ///< why the file could not be read, for the person; empty when it was

    bool operator==(const IssueItem &) const = default;

    /** Without its folder. */
    [[nodiscard]] QString fileName() const { return path.sliced(path.lastIndexOf(u'/') + 1); }
};

} // namespace Vesk
