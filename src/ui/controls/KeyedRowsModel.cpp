#include "ui/controls/KeyedRowsModel.h"

#include "base/Splice.h"

#include <functional>

namespace Vesk
{

int KeyedRowsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

bool KeyedRowsModel::holds(const QModelIndex &index) const
{
    return checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid);
}

void KeyedRowsModel::setKeys(const QStringList &keys)
{
    if (keys == m_keys) {
        return;
    }
    // A single row added or removed, which is what happens nearly always, is told as exactly that.
    const Splice splice = spliceOf(m_keys, keys, std::equal_to<>());
    const bool countDiffers = keys.size() != m_keys.size();
    if (splice.gone > 0) {
        beginRemoveRows({}, static_cast<int>(splice.head), static_cast<int>(splice.head + splice.gone - 1));
        m_keys.remove(splice.head, splice.gone);
        endRemoveRows();
    }
    if (splice.come > 0) {
        beginInsertRows({}, static_cast<int>(splice.head), static_cast<int>(splice.head + splice.come - 1));
        m_keys = keys;
        endInsertRows();
    }
    if (countDiffers) {
        Q_EMIT countChanged();
    }
}

void KeyedRowsModel::noteChanged(const QString &key)
{
    const auto row = static_cast<int>(m_keys.indexOf(key));
    if (row >= 0) {
        Q_EMIT dataChanged(index(row), index(row));
    }
}

void KeyedRowsModel::noteAllChanged()
{
    if (count() > 0) {
        Q_EMIT dataChanged(index(0), index(count() - 1));
    }
}

} // namespace Vesk
