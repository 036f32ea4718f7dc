#include "ui/issues/IssueRows.h"

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

/** A key for each row: its name, and which of that name it is. */
template <typename Rows, typename Name>
QStringList numberedKeys(const Rows &rows, Name name)
{
    QStringList keys;
    for (const auto &row : rows) {
        QString key = name(row);
        while (keys.contains(key)) {
            key += u'+';
        }
        keys.append(key);
    }
    return keys;
}

} // namespace

void IssueFieldRows::show(const QList<Row> &rows)
{
    if (rows == m_rows) {
        return;
    }
    const auto keys = numberedKeys(rows, [](const Row &row) { return row.name; });
    if (keys != this->keys()) {
        setKeys({});
    }
    m_rows = rows;
    setKeys(keys);
    noteAllChanged();
}

QVariant IssueFieldRows::data(const QModelIndex &index, int role) const
{
    if (!holds(index) || index.row() >= m_rows.size()) {
        return {};
    }
    const auto &row = m_rows[index.row()];
    return role == NameRole || role == Qt::DisplayRole ? QVariant(row.name)
        : role == ValueRole                            ? QVariant(row.value)
                                                       : QVariant();
}

QHash<int, QByteArray> IssueFieldRows::roleNames() const
{
    return {{NameRole, "name"}, {ValueRole, "value"}};
}

void IssueRefRows::show(const QList<Row> &rows)
{
    if (rows == m_rows) {
        return;
    }
    const auto keys = numberedKeys(rows, [](const Row &row) { return row.id.toLower(); });
    if (keys != this->keys()) {
        setKeys({});
    }
    m_rows = rows;
    setKeys(keys);
    noteAllChanged();
}

QVariant IssueRefRows::data(const QModelIndex &index, int role) const
{
    if (!holds(index) || index.row() >= m_rows.size()) {
        return {};
    }
    const auto &row = m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case IdRole:
        return row.id;
    case TitleRole:
        return row.title;
    case StatusRole:
        return row.status;
    case StruckRole:
        return row.struck;
    case MissingRole:
        return row.missing;
    case NoteRole:
        return row.note;
    default:
        return {};
    }
}

QHash<int, QByteArray> IssueRefRows::roleNames() const
{
    return {{IdRole, "issueId"},    {TitleRole, "title"},     {StatusRole, "statusKind"},
            {StruckRole, "struck"}, {MissingRole, "missing"}, {NoteRole, "note"}};
}

} // namespace Vesk
