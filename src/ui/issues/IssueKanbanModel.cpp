#include "ui/issues/IssueKanbanModel.h"

#include "app/Runtime.h"
#include "issues/IssueSearch.h"
#include "sessions/ProjectChat.h"

#include <algorithm>
#include <cmath>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

QString columnKey(const IssueStatus &status)
{
    return u'=' + status.written();
}

} // namespace

IssueKanbanModel::IssueKanbanModel(QObject *parent)
    : KeyedRowsModel(parent)
    , m_board(std::make_shared<IssueKanban::Board>())
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    connect(&m_soon, &QTimer::timeout, this, &IssueKanbanModel::update);
}

void IssueKanbanModel::setView(IssuesView *view)
{
    if (m_view == view || !view) {
        return;
    }
    m_view = view;
    connect(view, &IssuesView::contentChanged, this, &IssueKanbanModel::update);
    connect(view, &IssuesView::queryChanged, this, &IssueKanbanModel::update);
    const auto later = [this] { m_soon.start(); };
    connect(&view->runtime().issues(), &IssueCrossings::sessionsChanged, this, later);
    update();
    setCurrentKey(view->selectedId().toLower());
    Q_EMIT viewChanged();
}

void IssueKanbanModel::update()
{
    const IssueStore &store = m_view->store();
    m_board = m_view->memo().isolatedBoard(store.graph());
    if (m_filter && m_board->cards(*m_filter).isEmpty()) {
        m_filter.reset();
    }
    const auto matched = IssueSearch::matchedKeys(store.items(), store.board().rows, m_view->query());
    QHash<IssueStatus, int> counts;
    QStringList keys;
    QList<KanbanCard> all;
    m_columns.clear();
    std::map<QString, QList<KanbanCard>> shown;
    for (const auto &column : m_board->columns) {
        QList<KanbanCard> cards;
        for (const auto &node : column.cards) {
            if (!matched || matched->contains(node.key)) {
                cards.append(KanbanCards::card(node, store));
            }
        }
        counts.insert(column.status, static_cast<int>(cards.size()));
        if (m_filter && *m_filter != column.status) {
            continue;
        }
        for (auto &card : cards) {
            card.session = IssueSession::foremost(m_view->runtime().issues().sessionsOn(card.path));
        }
        all += cards;
        m_columns.append(column.status);
        keys.append(columnKey(column.status));
        shown[keys.last()] = std::move(cards);
    }
    for (const auto &[key, cards] : shown) {
        auto &model = m_cards[key];
        if (!model) {
            model = std::make_unique<IssueKanbanCards>(this);
        }
        model->show(cards);
    }
    setKeys(keys);
    std::erase_if(m_cards, [&shown](const auto &entry) { return !shown.contains(entry.first); });
    noteAllChanged();
    followSessions(all);
    showChips(counts);
    Q_EMIT boardChanged();
    Q_EMIT currentChanged();
}

void IssueKanbanModel::followSessions(const QList<KanbanCard> &cards)
{
    for (const auto &link : std::as_const(m_sessionLinks)) {
        disconnect(link);
    }
    m_sessionLinks.clear();
    const auto later = [this] { m_soon.start(); };
    for (const auto &card : cards) {
        for (const ProjectChat *chat : m_view->runtime().issues().sessionsOn(card.path)) {
            m_sessionLinks +=
                {connect(chat, &ProjectChat::isRunningChanged, this, later),
                 connect(chat, &ProjectChat::pendingPromptChanged, this, later),
                 connect(chat, &ProjectChat::runStartedAtChanged, this, later),
                 connect(chat, &ProjectChat::titleChanged, this, later),
                 connect(&chat->backgroundTasks(), &BackgroundTasks::tasksChanged, this, later)};
        }
    }
}

void IssueKanbanModel::showChips(const QHash<IssueStatus, int> &counts)
{
    QList<IssueKanbanChips::Row> rows {{std::nullopt, 0, !m_filter, false}};
    for (const auto &column : m_board->columns) {
        const int count = counts.value(column.status);
        rows.first().count += count;
        rows.append({column.status, count, m_filter == column.status, false});
    }
    for (const auto &status : m_board->emptyKnownStatuses) {
        rows.append({status, 0, false, true});
    }
    m_chips.show(rows);
}

QString IssueKanbanModel::label(const IssueStatus &status)
{
    return status.kind == IssueStatus::Kind::Unset ? u"상태 없음"_s : status.written();
}

QString IssueKanbanModel::relatedText() const
{
    const auto related = m_view ? m_view->store().graph().nodes.size() : 0;
    return related > 0
        ? u"선행·후행이 없는 이슈만 보입니다 — 관계 있는 %1건은 의존관계에 있습니다"_s.arg(related)
        : QString();
}

QString IssueKanbanModel::emptyText() const
{
    if (m_board->columns.isEmpty()) {
        return u"선행·후행이 없는 이슈가 없습니다"_s;
    }
    const bool hasCards = std::ranges::any_of(m_cards, [](const auto &e) { return e.second->count() > 0; });
    return hasCards ? QString() : u"찾는 말이 든 이슈가 없습니다"_s;
}

const KanbanCard *IssueKanbanModel::card(const QString &key) const
{
    for (const auto &[columnKey, model] : m_cards) {
        if (const int row = model->rowOf(key); row >= 0) {
            return &model->cards()[row];
        }
    }
    return nullptr;
}

void IssueKanbanModel::setCurrentKey(const QString &key)
{
    if (m_currentKey != key) {
        m_currentKey = key;
        Q_EMIT currentChanged();
    }
}

int IssueKanbanModel::currentColumn() const
{
    const auto *current = card(m_currentKey);
    return current ? static_cast<int>(m_columns.indexOf(current->status)) : -1;
}

QString IssueKanbanModel::currentText() const
{
    const auto *current = card(m_currentKey);
    return current ? current->id + u", "_s + current->title + u", "_s + label(current->status) : QString();
}

void IssueKanbanModel::filterBy(int chip)
{
    if (chip < 0 || chip >= m_chips.rows().size() || m_chips.rows()[chip].vacant) {
        return;
    }
    const auto &row = m_chips.rows()[chip];
    m_filter = row.chosen ? std::nullopt : row.status;
    update();
}

void IssueKanbanModel::choose(const QString &key)
{
    setCurrentKey(key);
    m_view->selectId(key);
}

void IssueKanbanModel::open(const QString &key)
{
    if (const auto *chosen = card(key); chosen && chosen->path.isEmpty()) {
        m_view->tell(chosen->id + u": 보드에만 있고 파일이 없어 열 수 없습니다"_s);
    } else if (chosen) {
        m_view->select(chosen->path);
        m_view->setSection(IssuesView::Section::List);
    }
}

void IssueKanbanModel::step(int across, int down)
{
    QList<QStringList> columns;
    for (const auto &status : std::as_const(m_columns)) {
        columns.append(m_cards.at(columnKey(status))->cardKeys());
    }
    setCurrentKey(KanbanCards::neighbour(columns, m_currentKey, across, down));
}

void IssueKanbanModel::shift(int by)
{
    const auto *current = card(m_currentKey);
    if (!current) {
        return;
    }
    if (const auto status = KanbanCards::shifted(KanbanCards::statuses(*m_board), current->status, by)) {
        move(current->key, status->written());
    }
}

bool IssueKanbanModel::canMove(const QString &key) const
{
    const auto *moved = card(key);
    return moved && !moved->path.isEmpty();
}

bool IssueKanbanModel::takes(const QString &key, const QString &word) const
{
    const auto *moved = card(key);
    const auto status = IssueStatus::parse(word);
    return moved && !moved->path.isEmpty() && status.kind != IssueStatus::Kind::Unset
        && status != moved->status && word != u"-";
}

void IssueKanbanModel::move(const QString &key, const QString &word)
{
    const auto *moved = card(key);
    if (moved && moved->path.isEmpty()) {
        refuse(key);
    } else if (takes(key, word)) {
        m_view->setStatus(QString(moved->path), word);
    }
}

void IssueKanbanModel::refuse(const QString &key)
{
    if (const auto *refused = card(key)) {
        m_view->tell(refused->id + u": 보드에만 있고 파일이 없어 옮길 수 없습니다"_s);
    }
}

QString IssueKanbanModel::wordAt(qreal x, qreal columnWidth, qreal gap) const
{
    const auto place = static_cast<qsizetype>(std::floor(x / (columnWidth + gap)));
    const bool isOnColumn = x >= 0 && place < m_columns.size()
        && x - static_cast<double>(place) * (columnWidth + gap) < columnWidth;
    return isOnColumn ? m_columns[place].written() : u"-"_s;
}

qreal IssueKanbanModel::columnWidth(qreal available, qreal gap, qreal least) const
{
    return KanbanCards::columnWidth(available, m_columns.size(), gap, least);
}

QVariant IssueKanbanModel::data(const QModelIndex &index, int role) const
{
    if (!holds(index)) {
        return {};
    }
    const QString &key = keys()[index.row()]; // a column on its way out is none of the board's any more
    const auto status = IssueStatus::parse(key.sliced(1));
    const auto cards = m_cards.find(key);
    switch (role) {
    case WordRole:
        return status.written();
    case Qt::DisplayRole:
    case LabelRole:
        return label(status);
    case StatusRole:
        return static_cast<int>(status.kind);
    case CountRole:
        return cards == m_cards.end() ? 0 : cards->second->count();
    case CardsRole:
        return QVariant::fromValue(cards == m_cards.end() ? nullptr : cards->second.get());
    default:
        return {};
    }
}

QHash<int, QByteArray> IssueKanbanModel::roleNames() const
{
    return {{WordRole, "word"},
            {LabelRole, "label"},
            {StatusRole, "status"},
            {CountRole, "count"},
            {CardsRole, "cards"}};
}

} // namespace Vesk
