#include "ui/chat/MarkdownBlockModel.h"

#include "markdown/MarkdownReader.h"

#include <QClipboard>
#include <QDateTime>
#include <QGuiApplication>

#include <algorithm>

namespace Vesk
{

namespace
{

QString kindWord(MarkdownBlock::Kind kind)
{
    switch (kind) {
    case MarkdownBlock::Kind::Paragraph:
        return QStringLiteral("paragraph");
    case MarkdownBlock::Kind::Heading:
        return QStringLiteral("heading");
    case MarkdownBlock::Kind::ListItem:
        return QStringLiteral("item");
    case MarkdownBlock::Kind::Code:
        return QStringLiteral("code");
    case MarkdownBlock::Kind::Table:
        return QStringLiteral("table");
    case MarkdownBlock::Kind::Rule:
        return QStringLiteral("rule");
    }
    return {};
}

QString markerText(const MarkdownBlock &block)
{
    switch (block.marker) {
    case MarkdownBlock::Marker::None:
    case MarkdownBlock::Marker::TaskOpen:
    case MarkdownBlock::Marker::TaskDone:
        return {};
    case MarkdownBlock::Marker::Bullet:
        return QStringLiteral("•");
    case MarkdownBlock::Marker::Number:
        return QStringLiteral("%1.").arg(block.number);
    }
    return {};
}

QString taskWord(const MarkdownBlock &block)
{
    if (block.marker == MarkdownBlock::Marker::TaskOpen) {
        return QStringLiteral("open");
    }
    return block.marker == MarkdownBlock::Marker::TaskDone ? QStringLiteral("done") : QString();
}

QString droppedCells(const MarkdownBlock &block)
{
    QStringList parts;
    if (block.droppedRows > 0) {
        parts << QStringLiteral("%1행").arg(block.droppedRows);
    }
    if (block.droppedColumns > 0) {
        parts << QStringLiteral("%1열").arg(block.droppedColumns);
    }
    return parts.isEmpty() ? QString() : parts.join(QStringLiteral(" · ")) + QStringLiteral(" 생략");
}

QString droppedWords(const MarkdownBlocks &read)
{
    QStringList parts;
    if (read.droppedCharacters > 0) {
        parts << QStringLiteral("%1자").arg(read.droppedCharacters);
    }
    if (read.droppedBlocks > 0) {
        parts << QStringLiteral("문단 %1개").arg(read.droppedBlocks);
    }
    return parts.isEmpty()
        ? QString()
        : QStringLiteral("이후 ") + parts.join(QStringLiteral(" · ")) + QStringLiteral(" 생략");
}

// How much of code is drawn: whole lines, unless the first is endless.
qsizetype shownCode(const QString &code)
{
    qsizetype end = 0;
    for (int line = 0; line < MarkdownBlockModel::maxCodeLines; ++line) {
        const auto next = code.indexOf(u'\n', end);
        const auto lineEnd = next < 0 ? code.size() : next;
        if (lineEnd > MarkdownBlockModel::maxCodeCharacters) {
            return end > 0 ? end - 1 : MarkdownBlockModel::maxCodeCharacters;
        }
        if (next < 0) {
            return code.size();
        }
        end = next + 1;
    }
    return end - 1;
}

QString codeRest(const QString &code)
{
    const auto rest = QStringView(code).mid(shownCode(code));
    if (rest.isEmpty()) {
        return {};
    }
    return QStringLiteral("이후 %1줄 생략 · 복사하면 전부 담깁니다")
        .arg(std::max<qsizetype>(rest.count(u'\n'), 1));
}

/** How many blocks at the end are shown alike, of `most`: they may stand elsewhere in the text. */
qsizetype sameAtEnd(const QList<MarkdownBlock> &before, const QList<MarkdownBlock> &after, qsizetype most)
{
    const auto isAlike = [](const MarkdownBlock &one, MarkdownBlock other) {
        other.taskAt = one.taskAt;
        return one == other;
    };
    qsizetype same = 0;
    while (same < most && isAlike(before[before.size() - 1 - same], after[after.size() - 1 - same])) {
        ++same;
    }
    return same;
}

} // namespace

MarkdownBlockModel::MarkdownBlockModel(QObject *parent)
    : QAbstractListModel(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &MarkdownBlockModel::read);
}

void MarkdownBlockModel::setText(const QString &text, bool growing)
{
    const bool settles = m_growing && !growing;
    m_growing = growing;
    if (m_text == text && !m_timer.isActive()) {
        if (settles && !m_blocks.isEmpty()) {
            const auto last = index(static_cast<int>(m_blocks.size()) - 1);
            Q_EMIT dataChanged(last, last, {SettledRole});
        }
        return;
    }
    m_text = text;
    auto rest = m_sinceRead.isValid() ? m_restMs - m_sinceRead.elapsed() : 0;
    if (!growing || !m_sinceRead.isValid() || rest <= -parseIntervalMs) {
        read();
    } else if (!m_timer.isActive()) {
        rest = std::max<qint64>(rest, 0);
        // Texts that grow side by side are read in the same beat, and drawn in one frame.
        const auto beat = QDateTime::currentMSecsSinceEpoch() + rest;
        m_timer.start(static_cast<int>(rest + parseIntervalMs - 1 - (beat - 1) % parseIntervalMs));
    }
}

void MarkdownBlockModel::showRead(const MarkdownBlocks &read)
{
    m_timer.stop();
    m_text.clear();
    m_growing = false;
    announce(read);
}

qsizetype MarkdownBlockModel::taskAt(int row) const
{
    return row >= 0 && row < m_blocks.size() ? m_blocks[row].taskAt : -1;
}

void MarkdownBlockModel::copyBlock(int index) const
{
    if (index >= 0 && index < m_blocks.size()) {
        QGuiApplication::clipboard()->setText(m_blocks.at(index).text);
    }
}

int MarkdownBlockModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_blocks.size());
}

QVariant MarkdownBlockModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto &block = m_blocks.at(index.row());
    switch (role) {
    case KindRole:
        return kindWord(block.kind);
    case HtmlRole:
        return block.html;
    case NoteRole:
        return block.note;
    case Qt::DisplayRole:
    case TextRole:
        return block.text;
    case LanguageRole:
        return block.language;
    case MarkerRole:
        return markerText(block);
    case TaskRole:
        return taskWord(block);
    case LevelRole:
        return block.headingLevel;
    case QuoteDepthRole:
        return block.quoteDepth;
    case ListDepthRole:
        return block.listDepth;
    case TightRole:
        return block.tight;
    case ColumnsRole:
        return block.columnCount();
    case AlignmentsRole:
        return QVariant::fromValue(block.alignments);
    case CellsRole:
        return block.cells;
    case DroppedCellsRole:
        return droppedCells(block);
    case ShownCodeRole:
        return block.text.left(shownCode(block.text));
    case CodeRestRole:
        return codeRest(block.text);
    case SettledRole:
        return !m_growing || index.row() != m_blocks.size() - 1;
    case ContinuesRole:
        return block.continues;
    case IsLastRole:
        return index.row() == m_blocks.size() - 1;
    default:
        return {};
    }
}

QHash<int, QByteArray> MarkdownBlockModel::roleNames() const
{
    return {{KindRole, "kind"},
            {HtmlRole, "html"},
            {NoteRole, "note"},
            {TextRole, "text"},
            {LanguageRole, "language"},
            {MarkerRole, "marker"},
            {TaskRole, "task"},
            {LevelRole, "level"},
            {QuoteDepthRole, "quoteDepth"},
            {ListDepthRole, "listDepth"},
            {TightRole, "tight"},
            {ColumnsRole, "columns"},
            {AlignmentsRole, "alignments"},
            {CellsRole, "cells"},
            {DroppedCellsRole, "droppedCells"},
            {ContinuesRole, "continues"},
            {ShownCodeRole, "shownCode"},
            {CodeRestRole, "codeRest"},
            {SettledRole, "settled"},
            {IsLastRole, "isLast"}};
}

void MarkdownBlockModel::read()
{
    m_timer.stop();
    QElapsedTimer work;
    work.start();
    const auto fresh = MarkdownReader::parse(m_text);
    m_restMs = std::max<qint64>(parseIntervalMs, work.elapsed() * 10);
    m_sinceRead.start();
    announce(fresh);
}

void MarkdownBlockModel::announce(const MarkdownBlocks &read)
{
    show(read.blocks);
    if (const auto words = droppedWords(read); words != m_droppedText) {
        m_droppedText = words;
        Q_EMIT droppedTextChanged();
    }
}

void MarkdownBlockModel::show(const QList<MarkdownBlock> &blocks)
{
    const auto before = m_blocks.size();
    const auto head = firstDifference(m_blocks, blocks);
    const auto tail = sameAtEnd(m_blocks, blocks, std::min(before, blocks.size()) - head);
    const auto fresh = blocks.size() - head - tail;
    const auto kept = std::min(before - head - tail, fresh);
    const auto rest = static_cast<int>(head + kept);
    if (const auto gone = before - head - tail - kept; gone > 0) {
        beginRemoveRows({}, rest, rest + static_cast<int>(gone) - 1);
        m_blocks.remove(rest, gone);
        endRemoveRows();
    }
    if (kept > 0) {
        std::copy_n(blocks.begin() + head, kept, m_blocks.begin() + head);
        Q_EMIT dataChanged(index(static_cast<int>(head)), index(rest - 1));
    }
    if (fresh > kept) {
        beginInsertRows({}, rest, static_cast<int>(head + fresh) - 1);
        m_blocks = blocks;
        endInsertRows();
    } else {
        m_blocks = blocks; // where those stand that are as they were
    }
    // Where the text ends has moved: the row that was last no longer is, or another one has become it.
    if (before != blocks.size()) {
        for (const auto row : {before - 1, blocks.size() - 1}) {
            if (row >= 0 && row < m_blocks.size()) {
                const auto changed = index(static_cast<int>(row));
                Q_EMIT dataChanged(changed, changed, {IsLastRole});
            }
        }
    }
}

} // namespace Vesk
