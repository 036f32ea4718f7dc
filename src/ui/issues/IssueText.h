// The text of an issue: what is shown of it, and changes of single places in it.
#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace Vesk::IssueText
{

/** How many signs two texts share at their beginnings, and at the ends of what is left of them. */
struct SameEnds {
    qsizetype head = 0;
    qsizetype tail = 0;
};
[[nodiscard]] SameEnds sameEnds(QStringView one, QStringView other);

/** The text as a preview shows it: title line and table of fields, which stand elsewhere, are blanked, so
   that every other sign keeps its place. */
[[nodiscard]] QString body(const QString &markdown);

/** The text with the sign between a task's brackets changed; absent when no such sign stands at `at`. */
[[nodiscard]] std::optional<QString> toggledTask(const QString &markdown, qsizetype at);

/** The text as an editor holds it: every line end is one LF. */
[[nodiscard]] QString editorText(const QString &text);

/** `text` changed as its editor text became `edited`; what was not touched keeps its line ends. */
[[nodiscard]] QString withEdit(const QString &text, const QString &edited);

/** Where a caret at `at` belongs when a text became another one: beside the same signs; where those are gone
   too, in the nearest line that is as its own was, else in the line that has its place. */
[[nodiscard]] qsizetype caretAfter(const QString &before, const QString &after, qsizetype at);

} // namespace Vesk::IssueText
