// The board brought into line with the issue files: a plan that can be shown before anything is written. Only
// status cells and the counts of summary tables are rewritten; rows may be added; nothing is ever deleted.
#pragma once

#include "issues/IssueDocument.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace Vesk::IssueBoardSync
{

/** An issue file as the plan sees it. */
struct Entry {
    QString id;
    QString title;
    QString status;    ///< the word as written; empty without one
    QString milestone; ///< as written
    std::optional<QString> area {};
    std::optional<QString> priority {};
    std::optional<QString> estimate {};
    QString fileName; ///< without its folder

    bool operator==(const Entry &) const = default;
};

struct StatusChange {
    QString id;
    QString from;
    QString to;
    bool operator==(const StatusChange &) const = default;
};

struct SummaryChange {
    QString status;
    QString from;
    QString to;
    bool operator==(const SummaryChange &) const = default;
};

struct Plan {
    QString markdown; ///< the whole new text
    QList<StatusChange> statusChanges;
    QStringList added;    ///< ids that get a row
    QStringList unplaced; ///< ids without a row to stand under: no section is ever made
    QList<SummaryChange> summaryChanges;
    QStringList untouchedBacklog; ///< ids of rows without a file
    QStringList deferredRows;     ///< ids without a row that this scope adds none for

    bool operator==(const Plan &) const = default;

    /** The text differs from the board's. */
    [[nodiscard]] bool changesAnything() const
    {
        return !statusChanges.isEmpty() || !added.isEmpty() || !summaryChanges.isEmpty();
    }
};

enum class Scope {
    StatusesOnly, ///< nothing is added
    Full,         ///< missing rows are added
};

[[nodiscard]] Entry entry(const IssueDocument &document, const QString &fileName);

/** Of entries with the same id, in any case, the first counts. Planning a plan's own text changes nothing. */
[[nodiscard]] Plan plan(const QString &board, const QList<Entry> &entries, Scope scope);

/** The line of a table with that header; the id stands in the first column when none is named for it. */
[[nodiscard]] QString row(const Entry &entry, const QStringList &header);

} // namespace Vesk::IssueBoardSync
