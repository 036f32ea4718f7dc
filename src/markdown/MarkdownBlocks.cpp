#include "markdown/MarkdownBlocks.h"

#include <algorithm>

namespace Vesk
{

qsizetype firstDifference(const QList<MarkdownBlock> &before, const QList<MarkdownBlock> &after)
{
    const auto difference = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    return difference.first - before.begin();
}

} // namespace Vesk
