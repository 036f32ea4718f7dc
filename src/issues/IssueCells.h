// The conventions of the table cells that issue files and the board share.
#pragma once

#include "issues/IssueDocument.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>
#include <utility>

namespace Vesk::IssueCells
{

/** Without blanks, "**", "~~" and backticks around it; a placeholder such as "—" is the empty text. */
[[nodiscard]] QString normalizeValue(QStringView text);
/** The same as a view of the text that was given. */
[[nodiscard]] QStringView normalizedView(QStringView text);
/** Not empty and made of numbers alone, of any script. */
[[nodiscard]] bool isNumeric(QStringView text);
/** Something, a dash and digits, as in "FE-BUG-12". */
[[nodiscard]] bool isIDToken(QStringView text);
/** The cells of a table line, without blanks around them. */
[[nodiscard]] QStringList tableCells(QStringView line);
/** The row of dashes under a header. */
[[nodiscard]] bool isSeparatorRow(QStringView line);
/** Id and title of the text of a title line; the id is empty when the line has none. */
[[nodiscard]] std::pair<QString, QString> splitHeading(QStringView text);
/** "ISSUE-012" of "ISSUE-012-login-flow"; absent when the name begins with no number. */
[[nodiscard]] std::optional<QString> leadingID(QStringView stem);
/** The text with `[A-1](a-1.md)` as `A-1`; links with another text stay. */
[[nodiscard]] QString unwrappingIDLinks(const QString &text);
[[nodiscard]] QString strippingStrayBackticks(QStringView text);
/** Whether a line goes through the text: "~~…~~", whatever follows. */
[[nodiscard]] bool isStruck(QStringView text);
/** The issues named in a reference cell, in their order. */
[[nodiscard]] QList<IssueDocument::Ref> refDetails(const std::optional<QString> &raw);
/** The cell with one more reference, in the cell's own style; unchanged when it is there already. */
[[nodiscard]] QString appendingRef(const QString &id, const QString &raw);
/** The status cell taken apart. */
[[nodiscard]] IssueDocument::StatusCell statusCell(QStringView raw);
/** The milestone's short name: all before the first " · ", " — ", " – " or " (", looked for in this order. */
[[nodiscard]] QString cutMilestone(QStringView text);

/** The text with one row of its table set, or added; every other byte stays. Absent without a table.
    `verbatim` writes the value as it is, else it takes the style of the cell it replaces. */
[[nodiscard]] std::optional<QString> setField(const QString &markdown, const QString &key,
                                              const QString &value, bool verbatim);

} // namespace Vesk::IssueCells
