#include "issues/IssueBoard.h"

#include "issues/BoardTable_p.h"
#include "issues/IssueCells.h"
#include "issues/TableLine_p.h"

#include <QSet>

namespace Vesk::IssueBoard
{
namespace
{

QStringView valueAt(QStringView line, qsizetype index)
{
    return IssueCells::normalizedView(TableLine::cell(line, index).value_or(QStringView()));
}

std::optional<QString> presentText(QStringView text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text.toString());
}

std::optional<Row> rowOf(QStringView line, const BoardHeader &header, const QString &milestone)
{
    const auto id = BoardId::read(line, header);
    if (!id)
        return std::nullopt;
    Row row {.id = id->id.toString(), .title = {}};
    row.milestone = milestone;
    if (id->target)
        row.link = id->target->toString();

    const qsizetype titleColumn = header.index(BoardColumn::Title);
    const auto titleCell =
        TableLine::cell(line, titleColumn >= 0 ? titleColumn : header.index(BoardColumn::Id) + 1);
    const QStringView title =
        IssueCells::normalizedView(BoardLink::read(titleCell.value_or(QStringView())).text);
    row.title = title.isEmpty() ? row.id : title.toString();

    row.area = presentText(valueAt(line, header.index(BoardColumn::Area)));
    row.priority = presentText(valueAt(line, header.index(BoardColumn::Priority)));
    row.estimate = presentText(valueAt(line, header.index(BoardColumn::Estimate)));
    row.status = presentText(IssueCells::statusCell(valueAt(line, header.index(BoardColumn::Status))).word);
    return row;
}

} // namespace

Board parse(const QString &markdown)
{
    Board board;
    QString milestone;
    QSet<QString> seen;
    walkBoard(
        markdown,
        [&](const MarkdownLine &line) {
            milestone = line.sectionTitle().toString();
            if (seen.contains(milestone))
                return;
            seen.insert(milestone);
            board.milestoneOrder.append(milestone);
        },
        [&](const MarkdownLine &line, const BoardHeader &header) {
            if (auto row = rowOf(line.trimmed, header, milestone))
                board.rows.append(*std::move(row));
        });
    return board;
}

std::pair<QString, std::optional<QString>> splitLink(QStringView text)
{
    const BoardLink link = BoardLink::read(text);
    return {link.text.toString(), link.target ? std::optional(link.target->toString()) : std::nullopt};
}

} // namespace Vesk::IssueBoard
