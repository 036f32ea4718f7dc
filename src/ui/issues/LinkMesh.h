// The links of a graph as triangles.
#pragma once

#include "ui/issues/LinkInk.h"
#include "ui/issues/LinkPaths.h"

#include <QRectF>

#include <cstdint>
#include <vector>

namespace Vesk
{

/** A corner of a triangle: its place in points of the layout, and in the picture of the ink from 0 to 1. */
struct LinkVertex {
    float x = 0;
    float y = 0;
    float u = 0;
    float v = 0;
};

struct LinkMesh {
    std::vector<LinkVertex> vertices;
    std::vector<std::uint32_t> indices; ///< three for a triangle, in the order of drawing
};

/** What may be seen in the area, in points of the layout. */
[[nodiscard]] LinkMesh linkMesh(const LinkDrawing &drawing, const LinkInk &ink, const QRectF &area);

} // namespace Vesk
