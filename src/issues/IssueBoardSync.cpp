#include "issues/IssueBoardSync.h"

#include "issues/BoardTable_p.h"
#include "issues/IssueCells.h"
#include "issues/IssueStatus.h"
#include "issues/TableLine_p.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace Vesk::IssueBoardSync
{
namespace
{

// A line with more cells is no issue's: rows under such a header would grow the board without measure.
constexpr qsizetype maxColumns = 256;

/** A stretch of the board and what stands there instead. */
struct Edit {
    qsizetype begin;
    qsizetype end;
    QString text;
};

/** Where the rows of a milestone go: behind this line. */
struct Placement {
    MarkdownLine line;
    QStringView header;
};

// The line with another text in one of its cells; the others lose the blanks that aligned them.
QString withCell(const MarkdownLine &line, qsizetype column, const QString &text)
{
    QString row = line.indent().toString();
    row += u'|';
    for (const QStringView cell : TableLine::rawCells(line.trimmed)) {
        row.append(u' ').append(column-- == 0 ? QStringView(text) : Text::trimBlanks(cell)).append(" |"_L1);
    }
    return row;
}

// Whether planning the cell again would leave it alone.
bool isSettled(const QString &cell, const QString &status)
{
    const IssueDocument::StatusCell read = IssueCells::statusCell(cell);
    return read.word.compare(status, Qt::CaseInsensitive) == 0
        || Text::trimBlanks(read.rewritten(status)) == cell;
}

// The cell with the file's status; absent when it stays. A project's own word beside a note needs backticks
// to be told from it, else the next plan would take the note for a part of the word.
std::optional<QString> updatedCell(const QString &cell, const IssueDocument::StatusCell &old,
                                   const QString &status)
{
    const std::array<QString, 3> forms {old.rewritten(status), u'`' + status + u'`' + old.trailing,
                                        status + old.trailing};
    for (const QString &form : forms) {
        const QString updated = Text::trimBlanks(form);
        if (updated == cell)
            return std::nullopt;
        if (isSettled(updated, status))
            return updated;
    }
    return std::nullopt;
}

class Planner
{
public:
    Planner(const QString &board, const QList<Entry> &entries)
        : m_board(board)
        , m_entries(entries)
    {
        for (const Entry &entry : entries) {
            ++m_counts[IssueStatus::parse(entry.status)];
            const QString key = entry.id.toLower();
            if (!m_entryOf.contains(key))
                m_entryOf.insert(key, &entry);
        }
    }

    Plan plan(Scope scope)
    {
        walkBoard(
            m_board,
            [this](const MarkdownLine &line) { m_milestone = IssueCells::cutMilestone(line.sectionTitle()); },
            [this](const MarkdownLine &line, const BoardHeader &header) {
                if (header.isSummary())
                    summaryRow(line);
                else
                    issueRow(line, header);
            });
        addMissing(scope);
        m_plan.markdown = edited();
        return std::move(m_plan);
    }

private:
    void issueRow(const MarkdownLine &line, const BoardHeader &header)
    {
        const auto id = BoardId::read(line.trimmed, header);
        if (!id)
            return;
        if (header.cellCount() <= maxColumns)
            m_placements.insert(m_milestone, {line, header.line()});
        const QString name = id->id.toString();
        const QString key = name.toLower();
        const Entry *entry = m_entryOf.value(key);
        if (entry == nullptr) {
            m_plan.untouchedBacklog.append(name);
            return;
        }
        m_placed.insert(key);
        const qsizetype column = header.index(BoardColumn::Status);
        const auto cell = TableLine::cell(line.trimmed, column);
        if (!cell || column == header.index(BoardColumn::Id))
            return;
        const IssueDocument::StatusCell old = IssueCells::statusCell(*cell);
        if (old.word.compare(entry->status, Qt::CaseInsensitive) == 0)
            return;
        const QString status = TableLine::asCell(entry->status);
        if (const auto updated = updatedCell(cell->toString(), old, status)) {
            m_plan.statusChanges.append({.id = name, .from = old.word, .to = entry->status});
            setCell(line, column, *updated);
        }
    }

    void summaryRow(const MarkdownLine &line)
    {
        const QStringView status =
            IssueCells::normalizedView(TableLine::cell(line.trimmed, 0).value_or(QStringView()));
        const auto cell = TableLine::cell(line.trimmed, 1);
        if (status.isEmpty() || !cell)
            return;
        const QString name = status.toString();
        const QString old = IssueCells::normalizeValue(*cell);
        const QString count = QString::number(m_counts.value(IssueStatus::parse(name)));
        if (old == count)
            return;
        m_plan.summaryChanges.append({.status = name, .from = old, .to = count});
        setCell(line, 1, count);
    }

    void setCell(const MarkdownLine &line, qsizetype column, const QString &text)
    {
        m_edits.append({line.begin, line.end(), withCell(line, column, text)});
    }

    void addMissing(Scope scope)
    {
        QList<Edit> rows;
        for (const Entry &entry : m_entries) {
            const QString key = entry.id.toLower();
            if (m_placed.contains(key))
                continue;
            m_placed.insert(key);
            if (scope == Scope::StatusesOnly)
                m_plan.deferredRows.append(entry.id);
            else if (auto edit = newRow(entry, key))
                rows.append(*std::move(edit));
            else
                m_plan.unplaced.append(entry.id);
        }
        // Each row goes directly behind its line, so of several behind one line the last is the first.
        std::reverse(rows.begin(), rows.end());
        m_edits.append(rows);
        std::stable_sort(m_edits.begin(), m_edits.end(),
                         [](const Edit &a, const Edit &b) { return a.begin < b.begin; });
    }

    // Absent when the milestone has no row to stand behind, or the row could not be found again by its id.
    std::optional<Edit> newRow(const Entry &entry, const QString &key)
    {
        const auto placement = m_placements.constFind(IssueCells::cutMilestone(entry.milestone));
        if (placement == m_placements.constEnd())
            return std::nullopt;
        const MarkdownLine &line = placement->line;
        const QString text = row(entry, IssueCells::tableCells(placement->header));
        const auto id = BoardId::read(text, BoardHeader(placement->header));
        if (!id || id->id.toString().toLower() != key)
            return std::nullopt;
        m_plan.added.append(entry.id);
        return Edit {line.endWithReturn(), line.endWithReturn(),
                     u'\n' + line.indent().toString() + text + (line.carriageReturn ? u"\r"_s : QString())};
    }

    QString edited() const
    {
        QString text;
        qsizetype copied = 0;
        const QStringView board(m_board);
        for (const Edit &edit : m_edits) {
            text += board.sliced(copied, edit.begin - copied);
            text += edit.text;
            copied = edit.end;
        }
        return m_edits.isEmpty() ? m_board : text.append(board.sliced(copied));
    }

    const QString &m_board;
    const QList<Entry> &m_entries;
    QHash<QString, const Entry *> m_entryOf; ///< by the id in lower case
    QHash<IssueStatus, qsizetype> m_counts;
    QString m_milestone;
    QHash<QString, Placement> m_placements; ///< by the milestone's short name
    QSet<QString> m_placed;                 ///< ids in lower case
    QList<Edit> m_edits;
    Plan m_plan;
};

} // namespace

Entry entry(const IssueDocument &document, const QString &fileName)
{
    return {
        .id = document.id,
        .title = document.title,
        .status = document.status().value_or(QString()),
        .milestone = document.value(IssueKeys::milestone()).value_or(QString()),
        .area = document.value(IssueKeys::area()),
        .priority = document.value(IssueKeys::priority()),
        .estimate = document.value(IssueKeys::estimate()),
        .fileName = fileName,
    };
}

Plan plan(const QString &board, const QList<Entry> &entries, Scope scope)
{
    return Planner(board, entries).plan(scope);
}

QString row(const Entry &entry, const QStringList &header)
{
    const bool namesId = std::any_of(header.begin(), header.end(), [](const QString &cell) {
        return boardColumn(cell) == BoardColumn::Id;
    });
    const QString none = u"—"_s;
    QStringList cells;
    for (qsizetype i = 0; i < header.size(); ++i) {
        // Where no column is named for the id, it is read from the first.
        const BoardColumn column = i == 0 && !namesId ? BoardColumn::Id : boardColumn(header[i]);
        QString text = none;
        switch (column) {
        case BoardColumn::Id:
            text = u'[' + entry.id + u"]("_s + entry.fileName + u')';
            break;
        case BoardColumn::Title:
            text = entry.title;
            break;
        case BoardColumn::Area:
            text = entry.area.value_or(none);
            break;
        case BoardColumn::Priority:
            text = entry.priority.value_or(none);
            break;
        case BoardColumn::Estimate:
            text = entry.estimate.value_or(none);
            break;
        case BoardColumn::Status:
            text = u'`' + entry.status + u'`';
            break;
        case BoardColumn::None:
            break;
        }
        cells.append(TableLine::asCell(text));
    }
    return u"| "_s + cells.join(" | "_L1) + u" |"_s;
}

} // namespace Vesk::IssueBoardSync
