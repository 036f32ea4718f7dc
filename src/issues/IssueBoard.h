// BOARD.md, the overview of an issue folder: a section per milestone, a table in it with a row per issue.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>

namespace Vesk::IssueBoard
{

/** A row as the board has it; the issue's own file may say otherwise. */
struct Row {
    QString id;
    QString title;                  ///< the id when the row has none
    std::optional<QString> link {}; ///< where the id leads to
    QString milestone {};           ///< the section's whole title; empty above the first section
    std::optional<QString> area {};
    std::optional<QString> priority {};
    std::optional<QString> estimate {};
    std::optional<QString> status {}; ///< the word alone

    bool operator==(const Row &) const = default;
};

struct Board {
    QList<Row> rows;            ///< in the order of the file
    QStringList milestoneOrder; ///< titles of the sections, each once

    bool operator==(const Board &) const = default;
};

/** Never fails. Rows without an issue's id are none: sums, prose, counts. */
[[nodiscard]] Board parse(const QString &markdown);

/** Text and target of "[text](target)"; any other text stays as it is, without a target. */
[[nodiscard]] std::pair<QString, std::optional<QString>> splitLink(QStringView text);

} // namespace Vesk::IssueBoard
