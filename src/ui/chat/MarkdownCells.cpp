#include "ui/chat/MarkdownCells.h"

#include "markdown/MarkdownLinks.h"

#include <QFontMetricsF>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace Vesk
{

namespace
{

constexpr qsizetype longestMeasured = 2000; // code units of a cell; the lines of a longer one are estimated
constexpr qreal styledShare = 1.12;         // bold words and code are wider than the font that is measured

int linesOf(const QString &text, const QFont &font, qreal width)
{
    int lines = 0;
    QTextLayout layout(text, font);
    layout.beginLayout();
    for (auto line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        ++lines;
    }
    layout.endLayout();
    return std::max(lines, 1);
}

} // namespace

void MarkdownCells::componentComplete()
{
    m_complete = true;
    measure();
}

void MarkdownCells::setCells(const QStringList &cells)
{
    m_cells = cells;
    measure();
}

void MarkdownCells::setColumns(int columns)
{
    m_columns = columns;
    measure();
}

void MarkdownCells::setFont(const QFont &font)
{
    m_font = font;
    measure();
}

void MarkdownCells::setLineHeight(qreal lineHeight)
{
    m_lineHeight = lineHeight;
    measure();
}

qreal MarkdownCells::wholeWidth() const
{
    return std::accumulate(m_widths.begin(), m_widths.end(), 0.0) + columnCount() + 1;
}

qreal MarkdownCells::wholeHeight() const
{
    return std::accumulate(m_heights.begin(), m_heights.end(), 0.0) + rowCount() + 1;
}

qreal MarkdownCells::columnWidth(int column) const
{
    return m_widths.value(column, -1);
}

qreal MarkdownCells::rowHeight(int row) const
{
    return m_heights.value(row, -1);
}

int MarkdownCells::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || m_columns <= 0 ? 0 : static_cast<int>(m_cells.size()) / m_columns;
}

int MarkdownCells::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() || m_cells.isEmpty() ? 0 : m_columns;
}

QVariant MarkdownCells::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto &html = m_cells.at(qsizetype(index.row()) * m_columns + index.column());
    switch (role) {
    case Qt::DisplayRole:
        return MarkdownLinks::plainText(html);
    case HtmlRole:
        return html;
    case AlignmentRole:
        return m_alignments.value(index.column(), Qt::AlignLeft);
    case IsHeadRole:
        return index.row() == 0;
    default:
        return {};
    }
}

QHash<int, QByteArray> MarkdownCells::roleNames() const
{
    return {{HtmlRole, "html"}, {AlignmentRole, "alignment"}, {IsHeadRole, "isHead"}};
}

void MarkdownCells::measure()
{
    if (!m_complete) {
        return;
    }
    beginResetModel();
    m_widths = QList<qreal>(columnCount(), 0);
    m_heights = QList<qreal>(rowCount(), 0);
    const QFontMetricsF metrics(m_font);
    for (int row = 0; row < rowCount(); ++row) {
        int mostLines = 1;
        for (int column = 0; column < columnCount(); ++column) {
            const auto &html = m_cells.at(qsizetype(row) * m_columns + column);
            const bool styled = row == 0 || html.contains(u'<');
            const qreal share = styled ? styledShare : 1;
            int lines = 0;
            qreal widest = 0;
            for (const auto &line : MarkdownLinks::plainText(html).split(u'\n')) {
                const qreal width = std::ceil(metrics.horizontalAdvance(line) * share) + 1;
                widest = std::max(widest, width);
                if (width <= widestCell) {
                    ++lines;
                } else if (line.size() <= longestMeasured) {
                    lines += linesOf(line, m_font, widestCell / share);
                } else {
                    lines += static_cast<int>(std::ceil(width / (widestCell * 0.9)));
                }
            }
            mostLines = std::max(mostLines, lines);
            m_widths[column] = std::max(m_widths[column], std::min(widest, widestCell) + 2 * sidePadding);
        }
        m_heights[row] = std::ceil(mostLines * m_lineHeight + 2 * endPadding);
    }
    endResetModel();
    Q_EMIT contentChanged();
}

} // namespace Vesk
