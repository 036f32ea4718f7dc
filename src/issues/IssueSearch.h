// Finding issues by what is typed.
#pragma once

#include "issues/IssueBoard.h"
#include "issues/IssueItem.h"

#include <QList>
#include <QSet>
#include <QString>

#include <optional>

namespace Vesk::IssueSearch
{

/** A query as matches() takes it. */
[[nodiscard]] QString prepared(const QString &query);

/** The ids in lower case of the issues and rows that hold the query; absent for a blank one, which filters
    nothing. */
[[nodiscard]] std::optional<QSet<QString>>
matchedKeys(const QList<IssueItem> &items, const QList<IssueBoard::Row> &boardRows, const QString &query);

/** Whether id, title, file name or a field holds a prepared query; an empty one is everywhere. */
[[nodiscard]] bool matches(const IssueDocument &doc, const QString &fileName, const QString &query);

} // namespace Vesk::IssueSearch
