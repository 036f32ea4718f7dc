#include "issues/IssueSearch.h"

#include "base/Text.h"

#include <algorithm>

namespace Vesk
{

namespace
{

/** Some systems write a Korean syllable as its letters: both forms are the same to the person. */
QString folded(const QString &text)
{
    return text.normalized(QString::NormalizationForm_C).toLower();
}

} // namespace

QString IssueSearch::prepared(const QString &query)
{
    return folded(Text::trimWhitespace(query));
}

std::optional<QSet<QString>> IssueSearch::matchedKeys(const QList<IssueItem> &items,
                                                      const QList<IssueBoard::Row> &boardRows,
                                                      const QString &query)
{
    const QString wanted = prepared(query);
    if (wanted.isEmpty()) {
        return std::nullopt;
    }
    QSet<QString> keys;
    for (const IssueItem &item : items) {
        if (matches(item.doc, item.fileName(), wanted)) {
            keys.insert(item.doc.id.toLower());
        }
    }
    for (const IssueBoard::Row &row : boardRows) {
        if (folded(row.id).contains(wanted) || folded(row.title).contains(wanted)) {
            keys.insert(row.id.toLower());
        }
    }
    return keys;
}

bool IssueSearch::matches(const IssueDocument &doc, const QString &fileName, const QString &query)
{
    const auto holds = [&](const QString &text) { return folded(text).contains(query); };
    return query.isEmpty() || holds(doc.id) || holds(doc.title) || holds(fileName)
        || std::ranges::any_of(doc.fields, [&](const auto &field) { return holds(field.rawValue); });
}

} // namespace Vesk
