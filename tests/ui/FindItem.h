// Looks for what a window shows.
#pragma once

#include <QQuickItem>

#include <functional>

namespace Vesk::Test
{

/** The first visible item that is wanted, from the root down; null for none. */
[[nodiscard]] QQuickItem *findItem(QQuickItem *root, const std::function<bool(const QQuickItem &)> &wanted);

} // namespace Vesk::Test
