// A list model whose rows are known by keys, told what its rows shall be, working out what changed.
#pragma once

#include <QAbstractListModel>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/** Rows keep their place as long as their key does: what comes in or goes out is announced as such, so a list
    keeps its scroll position, its current row and its delegates. */
class KeyedRowsModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int count() const { return static_cast<int>(m_keys.size()); }

Q_SIGNALS:
    void countChanged();

protected:
    [[nodiscard]] const QStringList &keys() const { return m_keys; }
    [[nodiscard]] bool holds(const QModelIndex &index) const;
    /** Makes these the rows; keys are unique. */
    void setKeys(const QStringList &keys);
    /** Says that everything about this row may have changed; an unknown key is nothing. */
    void noteChanged(const QString &key);
    void noteAllChanged();

private:
    QStringList m_keys;
};

} // namespace Vesk
