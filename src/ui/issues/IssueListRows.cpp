#include "ui/issues/IssueListRows.h"

#include "issues/IssueSearch.h"

#include <algorithm>
#include <map>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

using Row = IssueListRow;

QString joinedMeta(const QStringList &parts)
{
    QStringList kept = parts;
    kept.removeAll(QString());
    return kept.join(u" · "_s);
}

IssueStatus statusOfRow(const IssueBoard::Row &row)
{
    return IssueStatus::parse(row.status);
}

Row issueRow(const IssueItem &item, const IssueGraph::Node *node)
{
    const auto &doc = item.doc;
    const auto word = [&doc](const QStringList &keys) { return doc.value(keys).value_or(QString()); };
    Row row {.kind = Row::Kind::Issue, .key = u"i:"_s + item.path, .path = item.path, .id = doc.id};
    row.title = doc.title;
    row.status = IssueStatus::parse(doc.status());
    const QString lead = row.status.kind == IssueStatus::Kind::Other ? row.status.other
        : row.status.kind == IssueStatus::Kind::Unset                ? u"상태 없음"_s
                                                                     : QString();
    row.meta =
        joinedMeta({lead, word(IssueKeys::area()), word(IssueKeys::priority()), word(IssueKeys::estimate())});
    row.unreadable = item.unreadable;
    std::tie(row.ending, row.tone) = IssueListRows::ending(row.status, doc.progress, node);
    return row;
}

Row boardRow(const IssueBoard::Row &board, const QString &group, qsizetype place)
{
    Row row {.kind = Row::Kind::BoardOnly,
             .key = u"b:%1:%2:%3"_s.arg(group, board.id).arg(place),
             .id = board.id,
             .title = board.title};
    row.status = statusOfRow(board);
    row.meta = joinedMeta({u"파일 없음"_s, board.area.value_or(QString()), board.priority.value_or(QString()),
                           board.estimate.value_or(QString())});
    return row;
}

} // namespace

std::pair<QString, Row::Tone> IssueListRows::ending(const IssueStatus &status,
                                                    const IssueDocument::Progress &progress,
                                                    const IssueGraph::Node *node)
{
    const QString share = progress.total > 0 ? u"%1/%2"_s.arg(progress.done).arg(progress.total) : QString();
    if (status.isTerminal() || !node) {
        return {share, Row::Tone::Plain};
    }
    if (!node->unresolved.isEmpty()) {
        return {u"선행 %1"_s.arg(node->unresolved.size()),
                status.kind == IssueStatus::Kind::Blocked ? Row::Tone::Blocked : Row::Tone::Waiting};
    }
    if (status.kind == IssueStatus::Kind::Todo && progress.done == 0) {
        return {u"지금 가능"_s, Row::Tone::Ready};
    }
    return {share, Row::Tone::Plain};
}

QList<std::pair<IssueStatus, int>> IssueListRows::statuses(const QList<IssueGroup> &groups)
{
    std::map<std::pair<IssueStatus::Kind, QString>, int> counts;
    const auto count = [&counts](const IssueStatus &status) { ++counts[{status.kind, status.other}]; };
    for (const auto &group : groups) {
        for (const auto &item : group.items) {
            count(IssueStatus::parse(item.doc.status()));
        }
        for (const auto &row : group.boardOnly) {
            count(statusOfRow(row));
        }
    }
    QList<std::pair<IssueStatus, int>> found;
    for (const auto &[status, number] : counts) {
        found.append({IssueStatus {status.first, status.second}, number});
    }
    return found;
}

QList<Row> IssueListRows::of(const QList<IssueGroup> &groups, const IssueGraph::Graph &graph,
                             const IssueListChoice &choice)
{
    QHash<QString, const IssueGraph::Node *> nodes;
    for (const auto *list : {&graph.nodes, &graph.isolatedNodes}) {
        for (const auto &node : *list) {
            nodes.insert(node.key, &node);
        }
    }
    const QString query = IssueSearch::prepared(choice.query);
    const bool narrowed = !query.isEmpty() || choice.status;
    const auto fits = [&choice](const IssueStatus &status) {
        return !choice.status || *choice.status == status;
    };

    QList<Row> rows;
    for (const auto &group : groups) {
        QList<Row> open;
        QList<Row> settled;
        int done = 0;
        for (const auto &item : group.items) {
            const auto status = IssueStatus::parse(item.doc.status());
            done += status.isTerminal() ? 1 : 0;
            if (fits(status) && IssueSearch::matches(item.doc, item.fileName(), query)) {
                auto row = issueRow(item, nodes.value(item.doc.id.toLower()));
                row.group = group.key;
                (status.isTerminal() ? settled : open).append(std::move(row));
            }
        }
        for (qsizetype place = 0; place < group.boardOnly.size(); ++place) {
            const auto &board = group.boardOnly[place];
            auto row = boardRow(board, group.key, place);
            row.group = group.key;
            done += row.status.isTerminal() ? 1 : 0;
            const bool found = query.isEmpty() || board.id.toLower().contains(query)
                || board.title.toLower().contains(query);
            if (fits(row.status) && found) {
                (row.status.isTerminal() ? settled : open).append(std::move(row));
            }
        }
        if (open.isEmpty() && settled.isEmpty()) {
            continue;
        }
        Row head {
            .kind = Row::Kind::Group, .key = u"g:"_s + group.key, .group = group.key, .title = group.title};
        head.done = done;
        head.total = static_cast<int>(group.items.size() + group.boardOnly.size());
        head.folded = !narrowed && choice.foldedGroups.contains(group.key);
        rows.append(head);
        if (head.folded) {
            continue;
        }
        rows.append(open);
        if (narrowed || settled.isEmpty()) {
            rows.append(settled);
            continue;
        }
        Row fold {.kind = Row::Kind::Settled, .key = u"s:"_s + group.key, .group = group.key};
        fold.title = u"끝난 이슈 %1건"_s.arg(settled.size());
        fold.total = static_cast<int>(settled.size());
        fold.folded = !choice.openSettled.contains(group.key);
        rows.append(fold);
        if (!fold.folded) {
            rows.append(settled);
        }
    }
    return rows;
}

} // namespace Vesk
