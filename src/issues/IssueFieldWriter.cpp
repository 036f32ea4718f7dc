// One row of an issue's table rewritten in place.
#include "issues/IssueCells.h"
#include "issues/TableLine_p.h"
#include "markdown/MarkdownLines.h"

using namespace Qt::StringLiterals;

namespace Vesk::IssueCells
{
namespace
{

bool isWrapped(QStringView cell, QStringView wrapper)
{
    return cell.size() >= 2 * wrapper.size() && cell.startsWith(wrapper) && cell.endsWith(wrapper);
}

QString wrapped(const QString &value, QStringView wrapper)
{
    return QString().append(wrapper).append(value).append(wrapper);
}

/** What the table above the first section offers to write to. */
struct FieldTable {
    std::optional<MarkdownLine> lastLine; ///< absent without a table
    std::optional<MarkdownLine> target;   ///< the row of the key, if there is one
    bool quotes = false;                  ///< some value stands in backticks
};

FieldTable fieldTable(QStringView markdown, const QString &key)
{
    FieldTable table;
    MarkdownLines lines(markdown);
    while (const auto line = lines.next()) {
        if (line->fenced)
            continue;
        if (line->isSectionHeading())
            break;
        if (!line->isTableLine())
            continue;
        table.lastLine = line;
        const auto cells = TableLine::pair(line->trimmed);
        if (!cells || isSeparatorRow(line->trimmed))
            continue;
        table.quotes = table.quotes || isWrapped(cells->second, u"`");
        if (!table.target && normalizedView(cells->first).compare(key, Qt::CaseInsensitive) == 0)
            table.target = line;
    }
    return table;
}

// The value in the style of the cell that it replaces.
QString restyled(const QString &value, QStringView oldCell)
{
    for (const QStringView wrapper : {QStringView(u"`"), QStringView(u"**")}) {
        if (isWrapped(oldCell, wrapper))
            return wrapped(value, wrapper);
    }
    return value;
}

QString fieldRow(QStringView indent, QStringView key, const QString &value)
{
    return indent.toString().append("| "_L1).append(key).append(" | "_L1).append(value).append(" |"_L1);
}

// The text with what lies between two places replaced.
QString spliced(QStringView text, qsizetype begin, qsizetype end, const QString &replacement)
{
    QString result;
    result.reserve(text.size() - (end - begin) + replacement.size());
    return result.append(text.left(begin)).append(replacement).append(text.sliced(end));
}

} // namespace

std::optional<QString> setField(const QString &markdown, const QString &key, const QString &value,
                                bool verbatim)
{
    const QStringView text(markdown);
    const FieldTable table = fieldTable(text, key);
    if (!table.lastLine)
        return std::nullopt;
    const QString written = value.isEmpty() ? u"—"_s : TableLine::asCell(value);
    if (table.target) {
        const auto cells = TableLine::pair(table.target->trimmed).value();
        const bool keepsStyle = !verbatim && !value.isEmpty();
        return spliced(text, table.target->begin, table.target->end(),
                       fieldRow(table.target->indent(), cells.first,
                                keepsStyle ? restyled(written, cells.second) : written));
    }
    const MarkdownLine &last = *table.lastLine;
    const QString row = fieldRow(last.indent(), TableLine::asCell(key),
                                 table.quotes && !value.isEmpty() ? wrapped(written, u"`") : written);
    return spliced(text, last.endWithReturn(), last.endWithReturn(),
                   u'\n' + row + (last.carriageReturn ? u"\r"_s : QString()));
}

} // namespace Vesk::IssueCells
