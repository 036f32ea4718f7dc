#include "ui/issues/IssueGraphModel.h"

#include "ui/issues/GraphCards.h"

#include <algorithm>

namespace Vesk
{

using namespace Qt::StringLiterals;

void IssueProblemRows::show(const QList<IssueGraph::Problem> &problems)
{
    if (m_problems == problems) {
        return;
    }
    m_problems = problems;
    QStringList keys;
    for (const auto &problem : problems) {
        keys.append(problem.id());
        m_byKey.insert(keys.last(), problem);
    }
    setKeys(keys);
    // Until here rows that go could still be asked for.
    m_byKey.removeIf([&keys](const auto &entry) { return !keys.contains(entry.key()); });
    noteAllChanged();
}

QVariant IssueProblemRows::data(const QModelIndex &index, int role) const
{
    if (!holds(index)) {
        return {};
    }
    const auto problem = m_byKey.value(keys()[index.row()]);
    switch (role) {
    case Qt::DisplayRole:
    case MessageRole:
        return problem.message();
    case IssueRole:
        return IssueGraph::primaryID(problem);
    default:
        return {};
    }
}

QHash<int, QByteArray> IssueProblemRows::roleNames() const
{
    return {{MessageRole, "message"}, {IssueRole, "issue"}};
}

IssueGraphModel::IssueGraphModel(QObject *parent)
    : QAbstractListModel(parent)
    , m_prepared(std::make_shared<IssueGraphMemo::Prepared>())
{
    connect(&m_stage, &GraphStage::changed, this, [this] {
        updateSight(false);
        followPointer();
    });
    connect(&m_stage, &GraphStage::fitted, this, &IssueGraphModel::revealFocus);
    m_fillLater.setSingleShot(true);
    m_fillLater.setInterval(10); // hardly more than once in a frame
    connect(&m_fillLater, &QTimer::timeout, this, [this] { updateRows(false); });
}

void IssueGraphModel::setView(IssuesView *view)
{
    if (m_view == view || !view) {
        return;
    }
    m_view = view;
    connect(view, &IssuesView::contentChanged, this, &IssueGraphModel::update);
    connect(view, &IssuesView::selectionChanged, this, &IssueGraphModel::followSelection);
    update();
    followSelection();
    Q_EMIT viewChanged();
}

void IssueGraphModel::update()
{
    const IssueGraph::Graph &graph = m_view->store().graph();
    if (!graph.milestones.contains(m_milestone)) {
        m_milestone.clear();
    }
    m_prepared = m_view->memo().prepared(graph, m_milestone);
    const auto &placements = m_prepared->layout.placements;
    m_placeOf.clear();
    m_sketches.clear();
    for (qsizetype place = 0; place < placements.size(); ++place) {
        m_placeOf.insert(placements[place].node.key, place);
        m_sketches.push_back(CardSketch::of(placements[place]));
    }
    m_problems.show(graph.problems);
    m_chain = m_focusKey.isEmpty()
        ? QSet<QString>()
        : m_view->memo().chain(m_prepared->scoped, m_focusKey).value_or(QSet<QString>());
    if (m_chain.isEmpty()) {
        m_focusKey.clear();
    }
    m_stage.show(m_milestone, m_prepared->layout.size);
    updateSight(true);
    followPointer();
    Q_EMIT pictureChanged();
    Q_EMIT focusChanged();
}

void IssueGraphModel::setMilestone(const QString &milestone)
{
    if (m_milestone != milestone && m_view) {
        m_milestone = milestone;
        update();
    }
}

QStringList IssueGraphModel::milestones() const
{
    return m_prepared->scoped.milestones;
}

void IssueGraphModel::setShowsResolved(bool shows)
{
    if (m_showsResolved != shows) {
        m_showsResolved = shows;
        Q_EMIT showsResolvedChanged();
    }
}

void IssueGraphModel::updateSight(bool anew)
{
    const QRectF held = m_stage.isTiny() ? QRectF() : GraphCards::heldWindow(m_stage.sight());
    if (anew || held != m_held) {
        m_held = held;
        updateRows(anew);
    }
}

QStringList IssueGraphModel::wantedRows() const
{
    QStringList wanted;
    if (m_stage.isTiny()) {
        std::ranges::copy_if(m_rows, std::back_inserter(wanted),
                             [this](const auto &key) { return card(key); });
        return wanted;
    }
    QList<const IssueGraph::Placement *> seen;
    for (const auto &card : m_prepared->layout.placements) {
        if (card.frame.intersects(m_held)) {
            seen.append(&card);
        }
    }
    const QPointF middle = m_held.center();
    std::ranges::sort(seen, {}, [&middle](const auto *card) {
        const QPointF way = card->frame.center() - middle;
        return QPointF::dotProduct(way, way);
    });
    for (const auto *card : std::as_const(seen)) {
        wanted.append(card->node.key);
    }
    return wanted;
}

void IssueGraphModel::updateRows(bool anew)
{
    constexpr qsizetype mostAtOnce = 16; // what a frame has time for
    constexpr qsizetype mostAdded = 10;  // those take longer than rows that are there
    QStringList come = wantedRows();
    const QSet<QString> wanted(come.cbegin(), come.cend());
    const QSet<QString> known(m_rows.cbegin(), m_rows.cend());
    come.removeIf([&known](const QString &key) { return known.contains(key); });
    const bool isGradual = !anew && !m_rows.isEmpty();
    const auto free =
        std::ranges::count_if(m_rows, [&wanted](const auto &key) { return !wanted.contains(key); });
    const qsizetype most = std::min(mostAtOnce, free + mostAdded);
    bool isMore = isGradual && come.size() > most;
    if (isMore) {
        come.resize(most);
    }
    auto next = come.cbegin();
    for (int row = 0; row < m_rows.size(); ++row) {
        const bool stays = wanted.contains(m_rows[row]);
        if (!stays && next != come.cend()) {
            m_rows[row] = *next++;
        } else if (!stays || !anew) {
            continue;
        }
        Q_EMIT dataChanged(index(row), index(row));
    }
    qsizetype changed = come.size();
    for (int row = static_cast<int>(m_rows.size()) - 1; row >= 0 && !isMore; --row) {
        if (wanted.contains(m_rows[row])) {
            continue;
        }
        isMore = isGradual && ++changed > mostAtOnce;
        if (!isMore) {
            beginRemoveRows({}, row, row);
            m_rows.removeAt(row);
            endRemoveRows();
        }
    }
    if (isMore) {
        m_fillLater.start();
    } else {
        m_fillLater.stop();
    }
    const QStringList added(next, come.cend());
    if (!added.isEmpty()) {
        const auto first = static_cast<int>(m_rows.size());
        beginInsertRows({}, first, first + static_cast<int>(added.size()) - 1);
        m_rows += added;
        endInsertRows();
    }
    Q_EMIT sketchesChanged();
}

std::vector<CardSketch> IssueGraphModel::sketches() const
{
    const bool all = m_stage.isTiny();
    const QSet<QString> shown = all ? QSet<QString>() : QSet<QString>(m_rows.cbegin(), m_rows.cend());
    std::vector<CardSketch> sketches;
    for (size_t at = 0; at < m_sketches.size(); ++at) {
        const QString &key = m_prepared->layout.placements[static_cast<qsizetype>(at)].node.key;
        if (!all && (shown.contains(key) || !m_sketches[at].frame.intersects(m_held))) {
            continue;
        }
        CardSketch sketch = m_sketches[at];
        sketch.hovered = key == m_hoverKey;
        sketch.focused = key == m_focusKey;
        sketch.faded = !m_chain.isEmpty() && !m_chain.contains(key) && !sketch.hovered;
        sketches.push_back(sketch);
    }
    return sketches;
}

void IssueGraphModel::drawSketches(GraphCardsItem *sketches)
{
    const auto give = [this, sketches] { sketches->setCards(this->sketches()); };
    connect(this, &IssueGraphModel::sketchesChanged, sketches, give);
    give();
}

void IssueGraphModel::drawLinks(GraphLinksItem *links)
{
    const auto giveLayout = [this, links] { links->setLayout(m_prepared->layout); };
    const auto giveChain = [this, links] { links->setChain(m_chain); };
    connect(this, &IssueGraphModel::pictureChanged, links, giveLayout);
    connect(this, &IssueGraphModel::focusChanged, links, giveChain);
    giveLayout();
    giveChain();
}

QString IssueGraphModel::keyAt(QPointF point) const
{
    const QPointF at = m_stage.inLayout(point);
    const auto &placements = m_prepared->layout.placements;
    const auto it =
        std::ranges::find_if(placements, [at](const auto &card) { return card.frame.contains(at); });
    return it == placements.end() ? QString() : it->node.key;
}

const IssueGraph::Placement *IssueGraphModel::card(const QString &key) const
{
    const qsizetype place = m_placeOf.value(key, -1);
    return place < 0 ? nullptr : &m_prepared->layout.placements[place];
}

void IssueGraphModel::click(QPointF point)
{
    const QString key = keyAt(point);
    if (key.isEmpty()) {
        focus({});
    } else {
        choose(key);
    }
}

void IssueGraphModel::openAt(QPointF point)
{
    if (const QString key = keyAt(point); !key.isEmpty()) {
        open(key);
    }
}

void IssueGraphModel::choose(const QString &key)
{
    focus(key);
    m_view->selectId(key);
}

void IssueGraphModel::step(Direction direction)
{
    const QString key =
        GraphCards::neighbour(m_prepared->layout, m_focusKey, static_cast<GraphCards::Direction>(direction));
    focus(key);
    revealFocus();
}

void IssueGraphModel::revealFocus()
{
    if (const auto *target = card(m_focusKey)) {
        m_stage.reveal(target->frame);
    }
}

void IssueGraphModel::open(const QString &id)
{
    if (m_view->selectId(id)) {
        m_view->setSection(IssuesView::Section::List);
    } else if (const auto *target = card(id)) {
        m_view->tell(target->node.id + u": 보드에만 있고 파일이 없어 열 수 없습니다"_s);
    }
}

void IssueGraphModel::followSelection()
{
    const QString key = m_view->selectedId().toLower();
    if (key != m_focusKey) {
        focus(key); // one without relations has no card: nothing is in focus then
        revealFocus();
    }
}

void IssueGraphModel::focus(const QString &key)
{
    const QString known = card(key) ? key : QString();
    if (m_focusKey == known) {
        return;
    }
    m_focusKey = known;
    m_chain = known.isEmpty() ? QSet<QString>()
                              : m_view->memo().chain(m_prepared->scoped, known).value_or(QSet<QString>());
    if (!m_rows.isEmpty()) {
        Q_EMIT dataChanged(index(0), index(static_cast<int>(m_rows.size()) - 1), {InChainRole, FocusedRole});
    }
    Q_EMIT sketchesChanged();
    Q_EMIT focusChanged();
}

QString IssueGraphModel::wordsOf(const QString &key, const QString &between) const
{
    const auto *known = card(key);
    if (!known) {
        return {};
    }
    const QString note = GraphCards::note(known->node).text;
    return known->node.id + between + known->node.title + (note.isEmpty() ? QString() : between + note);
}

QString IssueGraphModel::focusText() const
{
    return wordsOf(m_focusKey, u", "_s);
}

QString IssueGraphModel::hoverText() const
{
    return wordsOf(m_hoverKey, u" · "_s);
}

QRectF IssueGraphModel::hoverFrame() const
{
    const auto *hovered = card(m_hoverKey);
    return hovered ? hovered->frame : QRectF();
}

void IssueGraphModel::hover(QPointF point)
{
    m_pointer = point;
    followPointer();
}

void IssueGraphModel::leave()
{
    m_pointer.reset();
    followPointer();
}

void IssueGraphModel::followPointer()
{
    const QString key = m_pointer && m_stage.isTiny() ? keyAt(*m_pointer) : QString();
    if (m_hoverKey != key) {
        m_hoverKey = key;
        Q_EMIT sketchesChanged();
        Q_EMIT hoverChanged();
    }
}

int IssueGraphModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant IssueGraphModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    const auto *const placement = card(m_rows[index.row()]);
    if (!placement) {
        return {}; // a row on its way out
    }
    const IssueGraph::Node &node = placement->node;
    switch (role) {
    case KeyRole:
        return node.key;
    case IdRole:
        return node.id;
    case Qt::DisplayRole:
    case TitleRole:
        return node.title;
    case StatusRole:
        return static_cast<int>(node.status.kind);
    case NoteRole:
        return GraphCards::note(node).text;
    case ToneRole:
        return static_cast<int>(GraphCards::note(node).tone);
    case MilestoneRole:
        return node.milestone;
    case FrameRole:
        return placement->frame;
    case InChainRole:
        return m_chain.isEmpty() || m_chain.contains(node.key);
    case FocusedRole:
        return node.key == m_focusKey;
    case ContextRole:
        return node.context;
    case SettledRole:
        return node.readiness == IssueGraph::Readiness::Settled;
    default:
        return {};
    }
}

QHash<int, QByteArray> IssueGraphModel::roleNames() const
{
    return {{KeyRole, "key"},
            {IdRole, "issueId"},
            {TitleRole, "title"},
            {StatusRole, "status"},
            {NoteRole, "note"},
            {ToneRole, "tone"},
            {MilestoneRole, "milestone"},
            {FrameRole, "frame"},
            {InChainRole, "inChain"},
            {FocusedRole, "focused"},
            {ContextRole, "context"},
            {SettledRole, "settled"}};
}

} // namespace Vesk
