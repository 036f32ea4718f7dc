#include "ui/shell/Panes.h"

#include "ui/shell/SessionRoster.h"

#include <QQmlEngine>

namespace Vesk
{

namespace
{

QString paneKey(const QUuid &session)
{
    return session.toString(QUuid::WithoutBraces);
}

PaneSide paneSide(Panes::Side side)
{
    return static_cast<PaneSide>(side);
}

} // namespace

void PaneTabs::setSessions(const QList<QUuid> &sessions)
{
    QStringList rows;
    for (const QUuid &session : sessions) {
        rows.append(paneKey(session));
    }
    setKeys(rows);
}

QHash<int, QByteArray> PaneSplits::roleNames() const
{
    return {{SplitRole, "split"}, {SideBySideRole, "sideBySide"},
            {LineRole, "line"},   {ValueRole, "value"},
            {FromRole, "from"},   {ToRole, "to"}};
}

QVariant PaneSplits::data(const QModelIndex &index, int role) const
{
    if (!holds(index)) {
        return {};
    }
    const PaneLayout::Split split = m_splits.value(keys().at(index.row()));
    switch (role) {
    case SplitRole:
        return split.id;
    case SideBySideRole:
        return split.sideBySide;
    case LineRole:
        return split.line;
    case ValueRole:
        return split.value;
    case FromRole:
        return split.from;
    case ToRole:
        return split.to;
    default:
        return {};
    }
}

void PaneSplits::setSplits(const QList<PaneLayout::Split> &splits)
{
    QStringList rows;
    m_splits.clear();
    for (const PaneLayout::Split &split : splits) {
        rows.append(QString::number(split.id));
        m_splits.insert(rows.constLast(), split);
    }
    setKeys(rows);
    noteAllChanged();
}

Panes::Panes(Runtime &runtime, SessionRoster &roster, QObject *parent)
    : KeyedRowsModel(parent)
    , m_runtime(runtime)
    , m_roster(roster)
    , m_splits(nullptr)
{
    update();
}

Panes::~Panes() = default;

QHash<int, QByteArray> Panes::roleNames() const
{
    return {{PaneRole, "pane"},       {PlaceRole, "place"},
            {TabsRole, "tabs"},       {ShownIndexRole, "shownIndex"},
            {FocusedRole, "focused"}, {ExpectingRole, "expecting"}};
}

QVariant Panes::data(const QModelIndex &index, int role) const
{
    const PaneNode *pane = holds(index) ? m_tree.node(keys().at(index.row()).toInt()) : nullptr;
    if (!pane) {
        return {};
    }
    switch (role) {
    case PaneRole:
        return pane->id;
    case PlaceRole:
        return m_layout.rectOf(pane->id);
    case TabsRole:
        return QVariant::fromValue(m_tabs.at(pane->id).get());
    case ShownIndexRole:
        return static_cast<int>(pane->tabs.indexOf(pane->shown));
    case FocusedRole:
        return pane->id == focusedPane();
    case ExpectingRole:
        return m_expecting && pane->tabs.isEmpty() && !pane->places.isEmpty();
    default:
        return {};
    }
}

void Panes::setTree(PaneTree tree)
{
    m_tree = std::move(tree);
    update();
}

void Panes::setExpecting(bool expecting)
{
    m_expecting = expecting;
    noteAllChanged();
}

void Panes::setArea(const QSizeF &area)
{
    if (m_area != area) {
        m_area = area;
        update();
        Q_EMIT areaChanged();
    }
}

void Panes::update()
{
    if (m_inOneGo) {
        return;
    }
    m_layout = layoutPanes(m_tree, m_area);
    const auto panes = m_tree.panes();
    QStringList rows;
    for (const PaneNode *pane : panes) {
        rows.append(QString::number(pane->id));
        auto &tabs = m_tabs[pane->id];
        if (!tabs) {
            tabs = std::make_unique<PaneTabs>(m_runtime, m_roster, nullptr);
            QQmlEngine::setObjectOwnership(tabs.get(), QQmlEngine::CppOwnership);
        }
        tabs->setSessions(pane->tabs);
    }
    setKeys(rows);
    noteAllChanged();
    for (auto it = m_tabs.begin(); it != m_tabs.end();) {
        if (m_tree.node(it->first)) {
            ++it;
        } else {
            it->second->setSessions({});
            it->second.release()->deleteLater(); // the pane's strip still looks at it
            it = m_tabs.erase(it);
        }
    }
    m_splits.setSplits(m_layout.splits);
    Q_EMIT treeChanged();
}

int Panes::focusedRow() const
{
    return static_cast<int>(keys().indexOf(QString::number(focusedPane())));
}

const PaneTabs &Panes::focusedTabs() const
{
    return *m_tabs.at(focusedPane());
}

void Panes::focusPane(int pane)
{
    change(&PaneTree::focus, pane);
}

void Panes::focusBeside(Side side)
{
    focusPane(paneBeside(m_layout, focusedPane(), paneSide(side)));
}

int Panes::paneOf(const QString &key) const
{
    const PaneNode *pane = m_tree.paneOf(QUuid::fromString(key));
    return pane ? pane->id : 0;
}

bool Panes::hasPaneBeside(const QString &key, Side side) const
{
    return paneBeside(m_layout, paneOf(key), paneSide(side)) != 0;
}

bool Panes::canSplit(const QString &key, Side side) const
{
    return count() < PaneTree::maximumPanes
        && hasRoomToSplit(m_layout.rectOf(paneOf(key)).size(), paneSide(side));
}

void Panes::moveTowards(const QString &key, Side side)
{
    const int there = paneBeside(m_layout, paneOf(key), paneSide(side));
    if (there != 0) {
        change(&PaneTree::move, QUuid::fromString(key), there, -1);
    } else if (canSplit(key, side)) {
        change(&PaneTree::split, paneOf(key), paneSide(side), QUuid::fromString(key));
    }
}

bool Panes::canShift(const QString &key, int places) const
{
    const PaneNode *pane = m_tree.paneOf(QUuid::fromString(key));
    if (!pane) {
        return false;
    }
    const qsizetype wanted = pane->tabs.indexOf(QUuid::fromString(key)) + places;
    return wanted >= 0 && wanted < pane->tabs.size();
}

void Panes::shift(const QString &key, int places)
{
    const QUuid session = QUuid::fromString(key);
    const PaneNode *pane = m_tree.paneOf(session);
    if (canShift(key, places)) {
        const auto now = static_cast<int>(pane->tabs.indexOf(session));
        change(&PaneTree::move, session, pane->id, now + places + (places > 0 ? 1 : 0));
    }
}

void Panes::closePane(int pane)
{
    change(&PaneTree::close, pane);
}

void Panes::resize(int split, double value)
{
    const auto found = std::ranges::find(m_layout.splits, split, &PaneLayout::Split::id);
    if (found != m_layout.splits.end() && found->extent > 0) {
        change(&PaneTree::resize, split, value / found->extent);
    }
}

void Panes::even(int split)
{
    change(&PaneTree::even, split);
}

} // namespace Vesk
