// What an agent is asked to do with issues; the person reads it before it is sent.
#pragma once

#include <QString>

namespace Vesk::IssuePromptTexts
{

/** Work on one issue. `issue` is its path as the agent sees it. */
[[nodiscard]] QString work(const QString &issue);

/** Fill an empty issue folder. `key` is the prefix of the numbers, ASCII letters and digits. */
[[nodiscard]] QString triage(const QString &folder, const QString &key);

} // namespace Vesk::IssuePromptTexts
