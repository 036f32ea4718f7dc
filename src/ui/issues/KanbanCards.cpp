#include "ui/issues/KanbanCards.h"

#include <algorithm>
#include <cmath>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr double broadestColumn = 420;

QString metaOf(const IssueDocument &doc, const IssueStatus &status)
{
    if (status.kind == IssueStatus::Kind::Unset) {
        return u"상태 칸이 비어 있습니다"_s;
    }
    if (const auto note = doc.statusNote(); note && status.kind == IssueStatus::Kind::Other) {
        return *note;
    }
    const auto area = doc.value(IssueKeys::area());
    const QString estimate = doc.value(IssueKeys::estimate()).value_or(u"추정 없음"_s);
    return area ? *area + u" · "_s + estimate : estimate;
}

} // namespace

KanbanCard KanbanCards::card(const IssueGraph::Node &node, const IssueStore &store)
{
    KanbanCard card {.key = node.key, .id = node.id, .title = node.title, .status = node.status};
    const IssueItem *item = node.kind == IssueGraph::Kind::File ? store.itemWithID(node.id) : nullptr;
    if (item) {
        card.path = item->path;
        card.priority = item->doc.value(IssueKeys::priority()).value_or(QString());
        card.meta = metaOf(item->doc, node.status);
        card.progress = item->doc.progress;
    } else {
        card.meta = u"파일 없음 · 보드에만 있음"_s;
        if (const auto *row = store.boardRowWithID(node.key)) {
            card.priority = row->priority.value_or(QString());
        }
    }
    return card;
}

QList<IssueStatus> KanbanCards::statuses(const IssueKanban::Board &board)
{
    QList<IssueStatus> statuses = board.emptyKnownStatuses;
    for (const auto &column : board.columns) {
        if (column.status.kind != IssueStatus::Kind::Unset) {
            statuses.append(column.status);
        }
    }
    std::ranges::stable_sort(statuses, {}, &IssueStatus::kind);
    return statuses;
}

std::optional<IssueStatus> KanbanCards::shifted(const QList<IssueStatus> &statuses, const IssueStatus &from,
                                                int by)
{
    const qsizetype known = statuses.indexOf(from);
    const qsizetype place = (known < 0 ? statuses.size() : known) + by;
    return place >= 0 && place < statuses.size() ? std::optional(statuses[place]) : std::nullopt;
}

QString KanbanCards::neighbour(const QList<QStringList> &columns, const QString &key, int across, int down)
{
    QString first;
    for (qsizetype column = 0; column < columns.size(); ++column) {
        if (first.isEmpty() && !columns[column].isEmpty()) {
            first = columns[column].first();
        }
        const qsizetype row = columns[column].indexOf(key);
        if (row < 0) {
            continue;
        }
        qsizetype target = column + across;
        while (across != 0 && target >= 0 && target < columns.size() && columns[target].isEmpty()) {
            target += across;
        }
        if (target < 0 || target >= columns.size()) {
            return key;
        }
        const auto &cards = columns[target];
        return cards[std::clamp<qsizetype>(row + down, 0, cards.size() - 1)];
    }
    return first.isEmpty() ? key : first;
}

double KanbanCards::columnWidth(double available, qsizetype count, double gap, double least)
{
    if (count < 1) {
        return least;
    }
    const auto places = static_cast<double>(count);
    return std::clamp(std::floor((available - gap * (places - 1)) / places), least,
                      std::max(least, broadestColumn));
}

} // namespace Vesk
