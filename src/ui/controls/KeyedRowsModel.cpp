#include "ui/controls/KeyedRowsModel.h"

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
    // What is the same at both ends stays; between them rows go, then rows come. A single row added or
    // removed, which is what happens nearly always, is then told as exactly that.
    qsizetype head = 0;
    while (head < keys.size() && head < m_keys.size() && keys[head] == m_keys[head]) {
        ++head;
    }
    qsizetype tail = 0;
    while (tail < keys.size() - head && tail < m_keys.size() - head
           && keys[keys.size() - 1 - tail] == m_keys[m_keys.size() - 1 - tail]) {
        ++tail;
    }
    const bool countDiffers = keys.size() != m_keys.size();
    const qsizetype gone = m_keys.size() - head - tail;
    if (gone > 0) {
        beginRemoveRows({}, static_cast<int>(head), static_cast<int>(head + gone - 1));
        m_keys.remove(head, gone);
        endRemoveRows();
    }
    const qsizetype come = keys.size() - head - tail;
    if (come > 0) {
        beginInsertRows({}, static_cast<int>(head), static_cast<int>(head + come - 1));
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
