// The text of an issue: what is shown of it, and changes of single places in it.
#pragma once

#include <QString>

#include <optional>

namespace Vesk::IssueText
{

/** The text as a preview shows it: title line and table of fields, which stand elsewhere, are blanked, so
   that every other sign keeps its place. */
[[nodiscard]] QString body(const QString &markdown);

/** The text with the sign between a task's brackets changed; absent when no such sign stands at `at`. */
[[nodiscard]] std::optional<QString> toggledTask(const QString &markdown, qsizetype at);

/** The text as an editor holds it: every line end is one LF. */
[[nodiscard]] QString editorText(const QString &text);

/** `text` changed as its editor text became `edited`; what was not touched keeps its line ends. */
[[nodiscard]] QString withEdit(const QString &text, const QString &edited);

} // namespace Vesk::IssueText
