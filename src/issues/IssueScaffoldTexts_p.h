// The two files of a new issue folder, as they are written into it.
#pragma once

namespace Vesk::IssueScaffoldTexts
{

/** With PROJECT where the project's name goes. */
extern const char16_t *const board;

/** What agents and people read before they touch an issue; with KEY where the prefix goes. */
extern const char16_t *const rules;

/** The least that an issue begins with; with KEY where the prefix goes. */
extern const char16_t *const skeleton;

} // namespace Vesk::IssueScaffoldTexts
