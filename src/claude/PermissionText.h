// A tool's input and the rules it suggests, put into text for the person who decides. The arguments are
// slices of valid JSON text.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <string_view>

namespace Vesk
{

/** The most telling argument of the call; the tool's name when it has none. `input` is the text of an object.
 */
[[nodiscard]] QString permissionSummary(const QString &toolName, std::string_view input);

/** Every argument on a line of its own, the telling ones first; the tool's name when there is none. */
[[nodiscard]] QString permissionDetail(const QString &toolName, std::string_view input);

/** One argument as text, cut at 600 characters with the number of those left out; numbers as they were
   written. Absent for null and for blank text. */
[[nodiscard]] std::optional<QString> renderDetailValue(std::string_view value);

/** The suggestions that an "always" may send back: those that allow, each bound to the project's local
   settings, otherwise byte for byte as they came. Absent when none remains or the value is no array. */
[[nodiscard]] std::optional<QByteArray> sanitizeSuggestions(std::string_view value);

/** Every rule that these sanitised suggestions would write, as in `Bash(git status:*)`. A suggestion that
   says more than rules to add is given as its JSON text: nothing that would be written is hidden. */
[[nodiscard]] QStringList ruleTexts(std::string_view suggestions);

} // namespace Vesk
