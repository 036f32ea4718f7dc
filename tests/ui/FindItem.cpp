#include "ui/FindItem.h"

namespace Vesk::Test
{

QQuickItem *findItem(QQuickItem *root, const std::function<bool(const QQuickItem &)> &wanted)
{
    if (wanted(*root)) {
        return root;
    }
    for (QQuickItem *child : root->childItems()) {
        if (child->isVisible()) {
            if (QQuickItem *found = findItem(child, wanted)) {
                return found;
            }
        }
    }
    return nullptr;
}

} // namespace Vesk::Test
