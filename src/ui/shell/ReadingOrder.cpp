#include "ui/shell/ReadingOrder.h"

namespace Vesk
{

void ReadingOrder::follow(QQuickItem *item, QQuickItem *before) const
{
    if (item && before && item != before && item->parentItem() == before->parentItem()) {
        item->stackAfter(before);
    }
}

} // namespace Vesk
