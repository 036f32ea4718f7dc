// How the tables of a board are laid out: which column means what, and which rows are issues.
#pragma once

#include "markdown/MarkdownLines.h"

#include <QStringView>

#include <array>
#include <functional>
#include <optional>

namespace Vesk
{

enum class BoardColumn { Id, Title, Area, Priority, Estimate, Status, None };

/** What a header cell announces; a word may follow the name, as in "우선순위 (P0~P2)". */
[[nodiscard]] BoardColumn boardColumn(QStringView headerCell);

/** The header of a table, as a view of the board's text. */
class BoardHeader
{
public:
    explicit BoardHeader(QStringView line);

    [[nodiscard]] QStringView line() const { return m_line; }
    [[nodiscard]] qsizetype cellCount() const { return m_cellCount; }
    /** The first column of that meaning; the first of all for ids, -1 for any other that is not there. */
    [[nodiscard]] qsizetype index(BoardColumn column) const;
    /** The table counts issues by their status. */
    [[nodiscard]] bool isSummary() const { return m_isSummary; }

private:
    QStringView m_line;
    std::array<qsizetype, static_cast<std::size_t>(BoardColumn::None)> m_indices {};
    qsizetype m_cellCount = 0;
    bool m_isSummary = false;
};

/** A cell that may be a link. */
struct BoardLink {
    QStringView text;
    std::optional<QStringView> target;

    [[nodiscard]] static BoardLink read(QStringView cell);
};

/** The id of a row's issue and where its cell leads to; absent when the row is no issue's. */
struct BoardId {
    QStringView id;
    std::optional<QStringView> target;

    [[nodiscard]] static std::optional<BoardId> read(QStringView row, const BoardHeader &header);
};

/** Calls back for each section's heading and each row below a header, those in code fences left out. */
void walkBoard(QStringView markdown, const std::function<void(const MarkdownLine &)> &onSection,
               const std::function<void(const MarkdownLine &, const BoardHeader &)> &onRow);

} // namespace Vesk
