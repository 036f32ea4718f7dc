#include "ui/issues/IssueRefChoice.h"

#include "issues/IssueSearch.h"

namespace Vesk
{

void IssueRefChoice::setView(IssuesView *view)
{
    m_view = view;
    refresh();
}

void IssueRefChoice::setQuery(const QString &query)
{
    m_query = query;
    refresh();
}

void IssueRefChoice::setWithout(const QStringList &ids)
{
    m_without = ids;
    refresh();
}

QString IssueRefChoice::idAt(int row) const
{
    return m_ids.value(row);
}

void IssueRefChoice::refresh()
{
    QList<IssueRefRows::Row> rows;
    m_ids.clear();
    const QString query = IssueSearch::prepared(m_query);
    const auto offer = [&](const QString &id, const QString &title, const IssueStatus &status) {
        const bool found = query.isEmpty() || id.toLower().contains(query) || title.toLower().contains(query);
        if (found && rows.size() < most && !m_without.contains(id, Qt::CaseInsensitive)) {
            rows.append({.id = id, .title = title, .status = static_cast<int>(status.kind)});
            m_ids.append(id);
        }
    };
    if (m_view) {
        for (const auto &item : m_view->store().items()) {
            offer(item.doc.id, item.doc.title, IssueStatus::parse(item.doc.status()));
        }
        for (const auto &row : m_view->store().boardOnlyRows()) {
            offer(row.id, row.title, IssueStatus::parse(row.status));
        }
    }
    m_rows.show(rows);
    Q_EMIT changed();
}

} // namespace Vesk
