// The links of a graph as pixels, for the software renderer. A painter draws a line that is little wider than
// a pixel fifteen times slower than a thin one, and a thin one as wide as a pixel whatever its width.
#pragma once

#include "ui/issues/LinkInk.h"
#include "ui/issues/LinkPaths.h"

#include <QImage>
#include <QPoint>

namespace Vesk
{

/**
 * Draws what may be seen of the links over a premultiplied picture. `origin` is the picture's corner in
 * pixels of the layout drawn at this scale. Returns how many points the lines and their arrows have there.
 */
qsizetype paintLinks(QImage &image, QPoint origin, double scale, const LinkDrawing &drawing,
                     const LinkColors &colors);

} // namespace Vesk
