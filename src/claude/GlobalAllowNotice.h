// What the user's global allow rules mean for a run that nobody attends, in words.
#pragma once

#include <QString>
#include <QStringList>

namespace Vesk
{

/** For the one who sets such a run up: its form alone does not show what the global settings allow besides.
 */
struct GlobalAllowNotice {
    int totalRules = 0;                 ///< rules that the global settings allow
    QStringList opensUnsupervisedTools; ///< of the tools that need a person, those that they open
    QStringList deniedThisRun;          ///< of those tools, the ones that this run does not get

    /** Empty when there are no rules. */
    [[nodiscard]] QString text() const;
};

} // namespace Vesk
