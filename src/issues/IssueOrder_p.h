// The order in which issues are listed.
#pragma once

#include "base/Text.h"

#include <QList>

#include <algorithm>
#include <utility>
#include <vector>

namespace Vesk
{

/** By id as the person's language lists names, digits by their value; equals keep their order. */
template <typename Entry, typename IDOf>
void sortByID(QList<Entry> &entries, IDOf idOf)
{
    std::vector<std::pair<QCollatorSortKey, qsizetype>> keys;
    keys.reserve(static_cast<std::size_t>(entries.size()));
    for (qsizetype i = 0; i < entries.size(); ++i) {
        keys.emplace_back(Text::nameSortKey(idOf(entries.at(i))), i);
    }
    std::ranges::stable_sort(keys,
                             [](const auto &left, const auto &right) { return left.first < right.first; });
    QList<Entry> sorted;
    sorted.reserve(entries.size());
    for (const auto &key : keys) {
        sorted.append(std::move(entries[key.second]));
    }
    entries = std::move(sorted);
}

} // namespace Vesk
