// The small lists of the kanban.
#include "ui/issues/IssueKanbanModel.h"

namespace Vesk
{

void IssueKanbanCards::show(const QList<KanbanCard> &cards)
{
    if (m_cards == cards) {
        return;
    }
    const QHash<QString, KanbanCard> before = m_byKey;
    m_cards = cards;
    QStringList keys;
    for (const auto &card : cards) {
        keys.append(card.key);
        m_byKey.insert(card.key, card);
    }
    setKeys(keys);
    // Until here rows that go could still be asked for.
    m_byKey.removeIf([&keys](const auto &entry) { return !keys.contains(entry.key()); });
    for (const auto &card : cards) {
        if (const auto was = before.constFind(card.key); was != before.cend() && *was != card) {
            noteChanged(card.key);
        }
    }
}

QVariant IssueKanbanCards::data(const QModelIndex &index, int role) const
{
    if (!holds(index)) {
        return {};
    }
    const KanbanCard card = m_byKey.value(keys()[index.row()]);
    switch (role) {
    case KeyRole:
        return card.key;
    case IdRole:
        return card.id;
    case Qt::DisplayRole:
    case TitleRole:
        return card.title;
    case StatusRole:
        return static_cast<int>(card.status.kind);
    case PathRole:
        return card.path;
    case PriorityRole:
        return card.priority;
    case MetaRole:
        return card.meta;
    case DoneRole:
        return card.progress.done;
    case TotalRole:
        return card.progress.total;
    case SessionMarkRole:
        return card.session ? static_cast<int>(card.session->mark) : -1;
    case SessionTextRole:
        return card.session ? card.session->text : QString();
    case SessionSinceRole:
        return card.session ? card.session->runningSince : QDateTime();
    default:
        return {};
    }
}

QHash<int, QByteArray> IssueKanbanCards::roleNames() const
{
    return {{KeyRole, "key"},
            {IdRole, "issueId"},
            {TitleRole, "title"},
            {StatusRole, "status"},
            {PathRole, "path"},
            {PriorityRole, "priority"},
            {MetaRole, "meta"},
            {DoneRole, "done"},
            {TotalRole, "total"},
            {SessionMarkRole, "sessionMark"},
            {SessionTextRole, "sessionText"},
            {SessionSinceRole, "sessionSince"}};
}

void IssueKanbanChips::show(const QList<Row> &rows)
{
    if (m_rows == rows) {
        return;
    }
    m_rows = rows;
    QStringList keys;
    for (const auto &row : rows) {
        keys.append(row.status ? u'=' + row.status->written() : QString());
        m_byKey.insert(keys.last(), row);
    }
    setKeys(keys);
    m_byKey.removeIf([&keys](const auto &entry) { return !keys.contains(entry.key()); });
    noteAllChanged();
}

QVariant IssueKanbanChips::data(const QModelIndex &index, int role) const
{
    if (!holds(index)) {
        return {};
    }
    const Row row = m_byKey.value(keys()[index.row()]);
    switch (role) {
    case WordRole:
        return row.status ? row.status->written() : QString();
    case Qt::DisplayRole:
    case LabelRole:
        return row.status ? IssueKanbanModel::label(*row.status) : QStringLiteral("전체");
    case StatusRole:
        return row.status ? static_cast<int>(row.status->kind) : -1;
    case CountRole:
        return row.count;
    case ChosenRole:
        return row.chosen;
    case VacantRole:
        return row.vacant;
    default:
        return {};
    }
}

QHash<int, QByteArray> IssueKanbanChips::roleNames() const
{
    return {{WordRole, "word"},   {LabelRole, "label"},   {StatusRole, "status"},
            {CountRole, "count"}, {ChosenRole, "chosen"}, {VacantRole, "vacant"}};
}

} // namespace Vesk
