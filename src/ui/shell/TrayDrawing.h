// The tray's icon, drawn from what it has to say.
#pragma once

#include "core/TrayItem.h"

#include <QImage>

namespace Vesk
{

struct TrayCounts;

/** One size of the icon: a plain glyph, with a green dot for unseen results; while something waits an amber
   square with the count. It has a ground of its own, for a panel may be light or dark. */
[[nodiscard]] QImage trayImage(const TrayCounts &counts, int size);

/** The icon in the sizes that trays have, with its tool tip. */
[[nodiscard]] TrayFace trayFace(const TrayCounts &counts);

} // namespace Vesk
