// What differs between two lists when most of them is the same: how a list model tells of a change.
#pragma once

#include <QtGlobal>

namespace Vesk
{

/** Between `head` items that stay at the start and those that stay at the end, some go and some come. */
struct Splice {
    qsizetype head = 0;
    qsizetype gone = 0;
    qsizetype come = 0;
};

/** `same(before, after)` says whether two items are one. */
template <typename List, typename Same>
[[nodiscard]] Splice spliceOf(const List &before, const List &after, Same same)
{
    const qsizetype shorter = qMin(before.size(), after.size());
    qsizetype head = 0;
    while (head < shorter && same(before[head], after[head]))
        ++head;
    qsizetype tail = 0;
    while (tail < shorter - head && same(before[before.size() - 1 - tail], after[after.size() - 1 - tail]))
        ++tail;
    return {head, before.size() - head - tail, after.size() - head - tail};
}

} // namespace Vesk
