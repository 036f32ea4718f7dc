// Bringing the board into line with the issue files.
#pragma once

#include "issues/IssueBoardSync.h"
#include "issues/IssueDesk.h"

#include <QString>

#include <tl/expected.hpp>

namespace Vesk::IssueBoardUpdate
{

/** After a change of a status: rewrites status cells and counts if need be. Shows nothing to anybody. */
void automatic(const IssueDesk &desk);

/** What the person is shown before anything is written: rows may be added. A sentence when the board cannot
   be read. */
[[nodiscard]] tl::expected<IssueBoardSync::Plan, QString> propose(const IssueDesk &desk);

/** Does what was proposed and gives it, planned anew: what board and files have become since then is kept. A
    sentence when it failed. */
[[nodiscard]] tl::expected<IssueBoardSync::Plan, QString> apply(const IssueDesk &desk);

} // namespace Vesk::IssueBoardUpdate
