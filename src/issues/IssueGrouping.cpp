#include "issues/IssueGrouping.h"

#include "base/Text.h"
#include "issues/IssueCells.h"
#include "issues/IssueOrder_p.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace Vesk
{

QList<IssueGroup> IssueGrouping::groups(const QList<IssueItem> &items, const IssueBoard::Board &board)
{
    QHash<QString, IssueGroup> byName;
    QSet<QString> fileKeys;
    for (const IssueItem &item : items) {
        fileKeys.insert(item.doc.id.toLower());
        byName[IssueCells::cutMilestone(item.doc.value(IssueKeys::milestone()).value_or(QString()))]
            .items.append(item);
    }
    for (const IssueBoard::Row &row : board.rows) {
        if (!fileKeys.contains(row.id.toLower())) {
            byName[IssueCells::cutMilestone(row.milestone)].boardOnly.append(row);
        }
    }

    QStringList names;
    QHash<QString, QString> headings;
    for (const QString &heading : board.milestoneOrder) {
        const QString name = IssueCells::cutMilestone(heading);
        if (!headings.contains(name)) {
            headings.insert(name, heading);
            names.append(name);
        }
    }
    QStringList others;
    for (auto it = byName.keyBegin(); it != byName.keyEnd(); ++it) {
        if (!headings.contains(*it)) {
            others.append(*it);
        }
    }
    others.sort();
    names += others;
    // Stable: all others keep their places.
    std::stable_partition(names.begin(), names.end(), [](const QString &name) { return !name.isEmpty(); });

    QList<IssueGroup> groups;
    for (const QString &name : std::as_const(names)) {
        const auto found = byName.find(name);
        if (found == byName.end()) {
            continue;
        }
        found->key = name;
        found->title = headings.value(name, name.isEmpty() ? QStringLiteral("마일스톤 없음") : name);
        sortByID(found->items, [](const IssueItem &item) { return item.doc.id; });
        sortByID(found->boardOnly, [](const IssueBoard::Row &row) { return row.id; });
        groups.append(std::move(*found));
    }
    return groups;
}

} // namespace Vesk
