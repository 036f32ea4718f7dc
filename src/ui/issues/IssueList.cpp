#include "ui/issues/IssueList.h"

namespace Vesk
{

using namespace Qt::StringLiterals;

void IssueStatusFilter::show(const QList<std::pair<IssueStatus, int>> &counts,
                             const std::optional<IssueStatus> &chosen)
{
    int all = 0;
    QStringList keys {u"all"_s};
    QList<Chip> chips {{std::nullopt, 0, !chosen}};
    for (const auto &[status, count] : counts) {
        all += count;
        keys.append(u"%1:%2"_s.arg(static_cast<int>(status.kind)).arg(status.other));
        chips.append({status, count, chosen == status});
    }
    chips.first().count = all;
    m_chips.clear();
    if (keys != this->keys()) {
        setKeys({});
    }
    m_chips = chips;
    setKeys(keys);
    noteAllChanged();
}

std::optional<IssueStatus> IssueStatusFilter::statusAt(int row) const
{
    return row >= 0 && row < m_chips.size() ? m_chips[row].status : std::nullopt;
}

QVariant IssueStatusFilter::data(const QModelIndex &index, int role) const
{
    if (!holds(index) || index.row() >= m_chips.size()) {
        return {};
    }
    const auto &chip = m_chips[index.row()];
    switch (role) {
    case KindRole:
        return chip.status ? static_cast<int>(chip.status->kind) : -1;
    case Qt::DisplayRole:
    case WordRole:
        return !chip.status                                 ? u"전체"_s
            : chip.status->kind == IssueStatus::Kind::Unset ? u"상태 없음"_s
                                                            : chip.status->written();
    case CountRole:
        return chip.count;
    case ChosenRole:
        return chip.chosen;
    default:
        return {};
    }
}

QHash<int, QByteArray> IssueStatusFilter::roleNames() const
{
    return {{KindRole, "statusKind"}, {WordRole, "word"}, {CountRole, "count"}, {ChosenRole, "chosen"}};
}

IssueList::IssueList(QObject *parent)
    : Vesk::KeyedRowsModel(parent)
{
}

void IssueList::setView(IssuesView *view)
{
    if (m_view == view) {
        return;
    }
    if (m_view) {
        m_view->disconnect(this);
    }
    m_view = view;
    if (m_view) {
        connect(m_view, &IssuesView::contentChanged, this, &IssueList::regroup);
        connect(m_view, &IssuesView::queryChanged, this, &IssueList::refresh);
        connect(m_view, &IssuesView::selectionChanged, this, [this] {
            unfoldFor(m_view->selectedPath());
            Q_EMIT selectedRowChanged();
        });
        regroup();
        unfoldFor(m_view->selectedPath());
    }
    Q_EMIT viewChanged();
}

int IssueList::selectedRow() const
{
    const QString path = m_view ? m_view->selectedPath() : QString();
    return path.isEmpty() ? -1 : static_cast<int>(keys().indexOf(u"i:"_s + path));
}

QString IssueList::emptyText() const
{
    if (!m_rows.isEmpty() || !m_view) {
        return {};
    }
    return m_groups.isEmpty()
        ? u"이 폴더에 이슈가 없습니다. 새 이슈를 만들거나 세션에게 일감을 찾게 하세요."_s
        : u"조건에 맞는 이슈가 없습니다"_s;
}

void IssueList::filterBy(int chip)
{
    const auto status = m_filter.statusAt(chip);
    m_choice.status = m_choice.status == status ? std::nullopt : status;
    m_filter.show(IssueListRows::statuses(m_groups), m_choice.status);
    refresh();
}

void IssueList::toggleFold(int row)
{
    if (row >= 0 && row < m_rows.size()) {
        setFolded(row, !m_rows[row].folded);
    }
}

void IssueList::setFolded(int row, bool folded)
{
    if (row < 0 || row >= m_rows.size()) {
        return;
    }
    const IssueListRow at = m_rows[row];
    auto &set = at.kind == IssueListRow::Kind::Group ? m_choice.foldedGroups : m_choice.openSettled;
    if (at.kind != IssueListRow::Kind::Group && at.kind != IssueListRow::Kind::Settled) {
        return;
    }
    if ((at.kind == IssueListRow::Kind::Group) == folded) {
        set.insert(at.group);
    } else {
        set.remove(at.group);
    }
    refresh();
}

void IssueList::activate(int row)
{
    if (row < 0 || row >= m_rows.size() || !m_view) {
        return;
    }
    if (m_rows[row].kind == IssueListRow::Kind::Issue) {
        m_view->select(m_rows[row].path);
    } else {
        toggleFold(row);
    }
}

int IssueList::issueFrom(int row, int step) const
{
    for (int at = row + step; at >= 0 && at < m_rows.size(); at += step) {
        if (m_rows[at].kind == IssueListRow::Kind::Issue) {
            return at;
        }
    }
    return row;
}

void IssueList::regroup()
{
    m_groups = IssueGrouping::groups(m_view->store().items(), m_view->store().board());
    m_filter.show(IssueListRows::statuses(m_groups), m_choice.status);
    refresh();
}

void IssueList::refresh()
{
    m_choice.query = m_view->query();
    auto rows = IssueListRows::of(m_groups, m_view->store().graph(), m_choice);
    QStringList keys;
    keys.reserve(rows.size());
    QSet<QString> known;
    for (auto &row : rows) {
        while (known.contains(row.key)) {
            row.key += u'+';
        }
        known.insert(row.key);
        keys.append(row.key);
    }
    const bool wasEmpty = m_rows.isEmpty();
    if (rows != m_rows) {
        m_rows = std::move(rows);
        QHash<QString, IssueListRow> byKey;
        for (const auto &row : m_rows) {
            byKey.insert(row.key, row);
        }
        // Until the rows have changed, those that go are asked for too.
        auto going = std::exchange(m_byKey, byKey);
        going.insert(m_byKey);
        m_byKey.swap(going);
        setKeys(keys);
        m_byKey.swap(going);
        noteAllChanged();
    }
    if (wasEmpty || m_rows.isEmpty()) {
        Q_EMIT emptyTextChanged();
    }
    Q_EMIT selectedRowChanged();
}

void IssueList::unfoldFor(const QString &path)
{
    if (selectedRow() >= 0 || path.isEmpty()) {
        return;
    }
    for (const auto &group : m_groups) {
        for (const auto &item : group.items) {
            if (item.path == path) {
                m_choice.foldedGroups.remove(group.key);
                if (IssueStatus::parse(item.doc.status()).isTerminal()) {
                    m_choice.openSettled.insert(group.key);
                }
                refresh();
                return;
            }
        }
    }
}

QVariant IssueList::data(const QModelIndex &index, int role) const
{
    const auto found = holds(index) ? m_byKey.constFind(keys().at(index.row())) : m_byKey.cend();
    if (found == m_byKey.cend()) {
        return {};
    }
    const auto &row = *found;
    switch (role) {
    case KindRole:
        return static_cast<int>(row.kind);
    case KeyRole:
        return row.key;
    case PathRole:
        return row.path;
    case IdRole:
        return row.id;
    case Qt::DisplayRole:
    case TitleRole:
        return row.title;
    case MetaRole:
        return row.meta;
    case StatusRole:
        return static_cast<int>(row.status.kind);
    case StatusWordRole:
        return row.status.written();
    case EndingRole:
        return row.ending;
    case ToneRole:
        return static_cast<int>(row.tone);
    case DoneRole:
        return row.done;
    case TotalRole:
        return row.total;
    case FoldedRole:
        return row.folded;
    case UnreadableRole:
        return row.unreadable;
    default:
        return {};
    }
}

QHash<int, QByteArray> IssueList::roleNames() const
{
    return {{KindRole, "kind"},         {KeyRole, "key"},
            {PathRole, "path"},         {IdRole, "issueId"},
            {TitleRole, "title"},       {MetaRole, "meta"},
            {StatusRole, "statusKind"}, {StatusWordRole, "statusWord"},
            {EndingRole, "ending"},     {ToneRole, "tone"},
            {DoneRole, "done"},         {TotalRole, "total"},
            {FoldedRole, "folded"},     {UnreadableRole, "unreadable"}};
}

} // namespace Vesk
