// The cells of a table line, where they lie: a line is never copied to be looked at.
#pragma once

#include "base/Text.h"

#include <QStringTokenizer>
#include <QStringView>

#include <optional>
#include <utility>

namespace Vesk::TableLine
{

/** The line without the blanks and the one "|" at each end. */
[[nodiscard]] inline QStringView body(QStringView line)
{
    line = Text::trimBlanks(line);
    if (line.startsWith(u'|'))
        line = line.sliced(1);
    if (line.endsWith(u'|'))
        line.chop(1);
    return line;
}

/** The cells, in turn, each with its blanks; a pipe cannot be escaped. */
[[nodiscard]] inline auto rawCells(QStringView line)
{
    return body(line).tokenize(u'|');
}

/** One cell without its blanks; absent when the line has fewer. */
[[nodiscard]] inline std::optional<QStringView> cell(QStringView line, qsizetype index)
{
    if (index < 0)
        return std::nullopt;
    for (const QStringView cell : rawCells(line)) {
        if (index-- == 0)
            return Text::trimBlanks(cell);
    }
    return std::nullopt;
}

/** Both cells of a line that has exactly two. */
[[nodiscard]] inline std::optional<std::pair<QStringView, QStringView>> pair(QStringView line)
{
    const QStringView cells = body(line);
    const qsizetype divider = cells.indexOf(u'|');
    if (divider < 0 || cells.indexOf(u'|', divider + 1) >= 0)
        return std::nullopt;
    return std::pair(Text::trimBlanks(cells.left(divider)), Text::trimBlanks(cells.sliced(divider + 1)));
}

/** Text that goes into a cell and has to stay one cell of one line. */
[[nodiscard]] QString asCell(const QString &text);

} // namespace Vesk::TableLine
