#include "ui/version/ChangesModel.h"

#include "base/Splice.h"

#include <algorithm>

namespace Vesk
{

namespace
{

using GitWorkingTree::Change;

bool isConflict(const Change &change)
{
    return change.kind() == Change::Kind::Conflicted;
}

QString toneOf(Change::Kind kind)
{
    switch (kind) {
    case Change::Kind::Modified:
        return QStringLiteral("accent");
    case Change::Kind::Added:
        return QStringLiteral("success");
    case Change::Kind::Deleted:
        return QStringLiteral("danger");
    case Change::Kind::Untracked:
        return QStringLiteral("info");
    case Change::Kind::Conflicted:
        return QStringLiteral("warning");
    default:
        return {};
    }
}

QString folderOf(const Change &change)
{
    const QString folder = change.directory();
    return folder.isEmpty() && change.isFolder() ? QStringLiteral("새 폴더") : folder;
}

QString stageOf(const Change &change)
{
    if (isConflict(change))
        return change.kindLabel();
    const QString summary = change.stageSummary();
    return summary.startsWith(QStringLiteral("staged")) ? summary : QString();
}

} // namespace

ChangesModel::ChangesModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int ChangesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QHash<int, QByteArray> ChangesModel::roleNames() const
{
    return {{PathRole, "path"},   {NameRole, "name"},           {FolderRole, "folder"},
            {BadgeRole, "badge"}, {KindLabelRole, "kindLabel"}, {StageRole, "stage"},
            {ToneRole, "tone"},   {ConflictRole, "conflict"}};
}

QVariant ChangesModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Change &change = m_changes[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case PathRole:
        return change.path;
    case NameRole:
        return change.isFolder() ? change.fileName() + u'/' : change.fileName();
    case FolderRole:
        return folderOf(change);
    case BadgeRole:
        return change.badge();
    case KindLabelRole:
        return change.kindLabel();
    case StageRole:
        return m_of == Of::WorkTree ? stageOf(change) : QString();
    case ToneRole:
        return toneOf(change.kind());
    case ConflictRole:
        return isConflict(change);
    default:
        return {};
    }
}

void ChangesModel::setChanges(QList<Change> changes, Of of)
{
    m_of = of;
    std::stable_partition(changes.begin(), changes.end(), isConflict);
    if (changes == m_changes)
        return;
    const Splice splice =
        spliceOf(m_changes, changes, [](const Change &a, const Change &b) { return a.path == b.path; });
    const qsizetype before = m_changes.size();
    if (splice.gone > 0) {
        beginRemoveRows({}, static_cast<int>(splice.head), static_cast<int>(splice.head + splice.gone - 1));
        m_changes.remove(splice.head, splice.gone);
        endRemoveRows();
    }
    if (splice.come > 0)
        beginInsertRows({}, static_cast<int>(splice.head), static_cast<int>(splice.head + splice.come - 1));
    m_changes = std::move(changes);
    if (splice.come > 0)
        endInsertRows();
    if (!m_changes.isEmpty())
        Q_EMIT dataChanged(index(0), index(count() - 1));
    if (before != m_changes.size())
        Q_EMIT countChanged();
}

const Change *ChangesModel::find(const QString &path) const
{
    const auto found = std::ranges::find(m_changes, path, &Change::path);
    return found == m_changes.end() ? nullptr : &*found;
}

int ChangesModel::rowOf(const QString &path) const
{
    const Change *change = find(path);
    return change ? static_cast<int>(change - m_changes.data()) : -1;
}

QString ChangesModel::pathAt(int row) const
{
    return row >= 0 && row < count() ? m_changes[row].path : QString();
}

} // namespace Vesk
