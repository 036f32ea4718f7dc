#include "ui/version/DiffModel.h"

#include "base/Splice.h"
#include "ui/version/VersionWords.h"

#include <algorithm>

namespace Vesk
{

namespace
{

using GitDiff::Line;

QString signOf(Line::Kind kind)
{
    return kind == Line::Kind::Added  ? QStringLiteral("+")
        : kind == Line::Kind::Removed ? QStringLiteral("−")
                                      : QString();
}

QString numberText(const std::optional<qint64> &number)
{
    return number ? QString::number(*number) : QString();
}

QVariant pairsOf(const QList<GitWordDiff::Range> &ranges)
{
    QList<int> pairs;
    for (const GitWordDiff::Range &range : ranges)
        pairs << static_cast<int>(range.start) << static_cast<int>(range.length);
    return QVariant::fromValue(pairs);
}

QString patchLine(const Line &line)
{
    switch (line.kind) {
    case Line::Kind::Added:
        return u'+' + line.text;
    case Line::Kind::Removed:
        return u'-' + line.text;
    case Line::Kind::Context:
        return u' ' + line.text;
    default:
        return line.text;
    }
}

// Hangul and its like take two columns.
qsizetype columnsOf(const QString &text)
{
    return text.size() + std::ranges::count_if(text, [](QChar c) { return c.unicode() >= 0x1100; })
        + 7 * text.count(u'\t');
}

} // namespace

DiffModel::DiffModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int DiffModel::count() const
{
    return static_cast<int>(m_lines.size()) + (m_remark.isEmpty() ? 0 : 1);
}

int DiffModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QHash<int, QByteArray> DiffModel::roleNames() const
{
    return {{KindRole, "kind"},           {TextRole, "text"}, {OldNumberRole, "oldNumber"},
            {NewNumberRole, "newNumber"}, {SignRole, "sign"}, {ClippedRole, "clipped"},
            {EmphasisRole, "emphasis"}};
}

QVariant DiffModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    if (index.row() == m_lines.size())
        return remarkData(role);
    const Line &line = m_lines[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case TextRole:
        return line.text;
    case KindRole:
        return static_cast<int>(line.kind);
    case OldNumberRole:
        return numberText(line.oldNumber);
    case NewNumberRole:
        return numberText(line.newNumber);
    case SignRole:
        return signOf(line.kind);
    case ClippedRole:
        return VersionWords::clipped(line.clippedBytes);
    case EmphasisRole:
        return pairsOf(line.emphasis);
    default:
        return {};
    }
}

QVariant DiffModel::remarkData(int role) const
{
    switch (role) {
    case Qt::DisplayRole:
    case TextRole:
        return m_remark;
    case KindRole:
        return static_cast<int>(RowKind::Remark);
    case EmphasisRole:
        return QVariant::fromValue(QList<int>());
    case OldNumberRole:
    case NewNumberRole:
    case SignRole:
    case ClippedRole:
        return QString();
    default:
        return {};
    }
}

void DiffModel::take(const GitDiff::FileDiff &diff)
{
    m_lines = diff.content.lines;
    m_remark = VersionWords::remark(diff);
    m_hunks.clear();
    m_longestLine.clear();
    m_longestIsCut = false;
    qsizetype most = 0;
    qint64 lastLine = 0;
    for (int row = 0; row < m_lines.size(); ++row) {
        if (m_lines[row].kind == Line::Kind::Hunk)
            m_hunks.append(row);
        lastLine =
            std::max({lastLine, m_lines[row].oldNumber.value_or(0), m_lines[row].newNumber.value_or(0)});
        if (const qsizetype columns = columnsOf(m_lines[row].text); columns > most) {
            most = columns;
            m_longestLine = m_lines[row].text;
            m_longestIsCut = m_lines[row].clippedBytes > 0;
        }
    }
    m_digits = static_cast<int>(QString::number(lastLine).size());
}

void DiffModel::reset(const GitDiff::FileDiff &diff)
{
    beginResetModel();
    take(diff);
    endResetModel();
    Q_EMIT changed();
}

void DiffModel::update(const GitDiff::FileDiff &diff)
{
    const QString remark = VersionWords::remark(diff);
    if (diff.content.lines == m_lines && remark == m_remark)
        return;
    if (remark.isEmpty() != m_remark.isEmpty()) {
        reset(diff);
        return;
    }
    const Splice splice = spliceOf(m_lines, diff.content.lines, [](const Line &a, const Line &b) {
        return a.kind == b.kind && a.text == b.text;
    });
    if (splice.gone > 0) {
        beginRemoveRows({}, static_cast<int>(splice.head), static_cast<int>(splice.head + splice.gone - 1));
        m_lines.remove(splice.head, splice.gone);
        endRemoveRows();
    }
    if (splice.come > 0)
        beginInsertRows({}, static_cast<int>(splice.head), static_cast<int>(splice.head + splice.come - 1));
    take(diff);
    if (splice.come > 0)
        endInsertRows();
    if (count() > 0)
        Q_EMIT dataChanged(index(0), index(count() - 1));
    Q_EMIT changed();
}

int DiffModel::hunkFrom(int row, int step) const
{
    if (step > 0) {
        const auto next = std::ranges::upper_bound(m_hunks, row);
        return next == m_hunks.end() ? -1 : *next;
    }
    const auto here = std::ranges::lower_bound(m_hunks, row);
    return here == m_hunks.begin() ? -1 : *std::prev(here);
}

int DiffModel::hunkAt(int row) const
{
    return static_cast<int>(std::ranges::upper_bound(m_hunks, row) - m_hunks.begin());
}

QString DiffModel::textOf(int first, int last) const
{
    QStringList lines;
    for (int row = std::max(first, 0); row <= last && row < m_lines.size(); ++row)
        lines.append(patchLine(m_lines[row]));
    return lines.join(u'\n');
}

} // namespace Vesk
