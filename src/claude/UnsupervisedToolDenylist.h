// The tools that a run without a person at hand does not get unless its owner named them.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace Vesk::UnsupervisedToolDenylist
{

/** The tool of a permission rule: the text before its first "(". Absent when that is blank. */
[[nodiscard]] std::optional<QString> toolName(const QString &rule);

/** The listed tools that none of the allowed rules opens, in list order. */
[[nodiscard]] QStringList denied(const QStringList &sessionAllowed);

/** The listed tools that the rules of the user's global settings open, in list order. */
[[nodiscard]] QStringList openedByGlobalAllow(const QStringList &rules);

} // namespace Vesk::UnsupervisedToolDenylist
