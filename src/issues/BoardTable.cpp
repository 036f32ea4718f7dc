#include "issues/BoardTable_p.h"
#include "issues/IssueCells.h"
#include "issues/TableLine_p.h"

#include <algorithm>

namespace Vesk
{
namespace
{

struct ColumnName {
    BoardColumn column;
    QStringView name;
};

// No name begins with another column's, so a header cell means one thing at most.
constexpr std::array columnNames {
    ColumnName {BoardColumn::Id, u"id"},
    ColumnName {BoardColumn::Id, u"아이디"},
    ColumnName {BoardColumn::Id, u"번호"},
    ColumnName {BoardColumn::Id, u"이슈"},
    ColumnName {BoardColumn::Title, u"제목"},
    ColumnName {BoardColumn::Title, u"title"},
    ColumnName {BoardColumn::Title, u"이름"},
    ColumnName {BoardColumn::Title, u"요약"},
    ColumnName {BoardColumn::Area, u"영역"},
    ColumnName {BoardColumn::Area, u"area"},
    ColumnName {BoardColumn::Area, u"분야"},
    ColumnName {BoardColumn::Priority, u"우선"},
    ColumnName {BoardColumn::Priority, u"p"},
    ColumnName {BoardColumn::Estimate, u"추정"},
    ColumnName {BoardColumn::Estimate, u"estimate"},
    ColumnName {BoardColumn::Estimate, u"예상"},
    ColumnName {BoardColumn::Estimate, u"규모"},
    ColumnName {BoardColumn::Status, u"상태"},
    ColumnName {BoardColumn::Status, u"status"},
    ColumnName {BoardColumn::Status, u"state"},
};

constexpr std::array<QStringView, 3> statusNames {u"상태", u"status", u"state"};
constexpr std::array<QStringView, 4> countNames {u"개수", u"count", u"수", u"건수"};

template <std::size_t size>
bool isOneOf(QStringView text, const std::array<QStringView, size> &names)
{
    return std::any_of(names.begin(), names.end(),
                       [text](QStringView name) { return text.compare(name, Qt::CaseInsensitive) == 0; });
}

bool namesSummary(QStringView header)
{
    const auto cells = TableLine::pair(header);
    return cells && isOneOf(IssueCells::normalizedView(cells->first), statusNames)
        && isOneOf(IssueCells::normalizedView(cells->second), countNames);
}

} // namespace

BoardColumn boardColumn(QStringView headerCell)
{
    const QStringView text = IssueCells::normalizedView(headerCell);
    for (const ColumnName &known : columnNames) {
        if (text.startsWith(known.name, Qt::CaseInsensitive))
            return known.column;
    }
    return BoardColumn::None;
}

BoardHeader::BoardHeader(QStringView line)
    : m_line(line)
    , m_isSummary(namesSummary(line))
{
    m_indices.fill(-1);
    for (const QStringView cell : TableLine::rawCells(line)) {
        const BoardColumn column = boardColumn(cell);
        if (column != BoardColumn::None && index(column) < 0)
            m_indices.at(static_cast<std::size_t>(column)) = m_cellCount;
        ++m_cellCount;
    }
    qsizetype &id = m_indices.front();
    id = std::max<qsizetype>(id, 0);
}

qsizetype BoardHeader::index(BoardColumn column) const
{
    return m_indices.at(static_cast<std::size_t>(column));
}

BoardLink BoardLink::read(QStringView cell)
{
    cell = Text::trimBlanks(cell);
    const qsizetype close = cell.indexOf(u']');
    if (close < 0 || !cell.startsWith(u'[') || !cell.endsWith(u')') || cell[close + 1] != u'(')
        return {.text = cell, .target = std::nullopt};
    return {
        .text = Text::trimBlanks(cell.sliced(1, close - 1)),
        .target = Text::trimBlanks(cell.sliced(close + 2).chopped(1)),
    };
}

std::optional<BoardId> BoardId::read(QStringView row, const BoardHeader &header)
{
    const auto cell = TableLine::cell(row, header.index(BoardColumn::Id));
    if (!cell)
        return std::nullopt;
    const BoardLink link = BoardLink::read(*cell);
    const QStringView id = IssueCells::normalizedView(link.text);
    return IssueCells::isIDToken(id) ? std::optional(BoardId {id, link.target}) : std::nullopt;
}

void walkBoard(QStringView markdown, const std::function<void(const MarkdownLine &)> &onSection,
               const std::function<void(const MarkdownLine &, const BoardHeader &)> &onRow)
{
    std::optional<QStringView> above; // a row that is the header if a row of dashes follows
    std::optional<BoardHeader> header;
    MarkdownLines lines(markdown);
    while (const auto line = lines.next()) {
        if (line->fenced)
            continue;
        if (!line->isTableLine()) {
            above.reset();
            header.reset();
            if (line->isSectionHeading())
                onSection(*line);
        } else if (IssueCells::isSeparatorRow(line->trimmed)) {
            header.reset();
            if (above)
                header.emplace(*above);
            above.reset();
        } else if (header) {
            onRow(*line, *header);
        } else {
            above = line->trimmed;
        }
    }
}

} // namespace Vesk
