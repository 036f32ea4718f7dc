// What a session can be asked to do to the repository, in words that the person may change.
#pragma once

#include "git/GitStatusReader.h"

#include <QString>

namespace Vesk::RequestDrafts
{

enum class Kind { Commit, Push, Resolve, Pull, Branch, Stash, Merge, Any };

/** The draft of a request; of Any an empty one. */
[[nodiscard]] QString draft(Kind kind, const GitStatusReader::RepoStatus &status);

/** Why there is nothing to ask for now; empty when there is. */
[[nodiscard]] QString reason(Kind kind, const GitStatusReader::RepoStatus &status);

} // namespace Vesk::RequestDrafts
