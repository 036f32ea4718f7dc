// The links of a graph as lines of short straight pieces, which is what any surface draws in the end.
#pragma once

#include "issues/IssueLinkCurves.h"

#include <QList>
#include <QPointF>
#include <QRectF>

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

namespace Vesk
{

/** One link. Lengths in the layout's points. */
struct LinkPath {
    std::vector<QPointF> points;
    std::vector<double> lengths; ///< from the start to each point
    std::array<QPointF, 3> arrow;
    QRectF bounds; ///< with its width and arrow
    IssueLinkCurves::Tone tone = IssueLinkCurves::Tone::Open;

    [[nodiscard]] QRectF arrowBounds() const
    {
        return {QPointF(std::min(arrow[0].x(), arrow[1].x()), arrow[1].y()),
                QPointF(std::max(arrow[0].x(), arrow[1].x()), arrow[2].y())};
    }
};

/** All that is to be drawn of a layout, in the order of drawing. */
struct LinkDrawing {
    struct Line {
        size_t path = 0;
        IssueLinkCurves::Stroke stroke {};
    };

    std::shared_ptr<const std::vector<LinkPath>> paths; ///< one for each link
    std::vector<Line> lines;

    [[nodiscard]] const LinkPath &path(const Line &line) const { return (*paths)[line.path]; }
};

/** The stroke as it is drawn where a pixel of the screen is `pixel` points wide: dashes closer to each other
   than pixels are a fainter line. */
[[nodiscard]] IssueLinkCurves::Stroke strokeAtScale(const IssueLinkCurves::Stroke &stroke, double pixel);

/** No point of the curve is further than `tolerance` from the path. */
[[nodiscard]] LinkPath linkPath(const IssueGraph::Link &link, double tolerance);

/** Of all links, close enough for the largest zoom. */
[[nodiscard]] std::vector<LinkPath> linkPaths(const QList<IssueGraph::Link> &links);

/** How far a point is from the straight line between two others. */
[[nodiscard]] double distanceFromChord(QPointF point, QPointF start, QPointF end);

/** The furthest point, `last` at most, up to which a straight piece is as good as the path, as far as pixels
   of the screen tell, `pixel` points wide. */
[[nodiscard]] size_t nextNeeded(const LinkPath &path, size_t at, size_t last, double pixel);

/** Around some points of a path; not empty, whatever their places. */
[[nodiscard]] QRectF pointsBounds(const LinkPath &path, size_t first, size_t last);

/** Calls `onRun(first, last)` for the runs of points that may be seen in the area, with some around them. */
template <typename OnRun>
void forVisibleRuns(const LinkPath &path, const QRectF &area, OnRun onRun)
{
    constexpr size_t stretch = 16;
    constexpr double widestHalf = 1; // of a line
    const QRectF wide = area.adjusted(-widestHalf, -widestHalf, widestHalf, widestHalf);
    if (path.points.size() < 2 || !path.bounds.intersects(area)) {
        return;
    }
    const size_t last = path.points.size() - 1;
    size_t runStart = 0;
    for (size_t first = 0; first < last; first += stretch) {
        const size_t end = std::min(last, first + stretch);
        if (!pointsBounds(path, first, end).intersects(wide)) {
            if (runStart < first) {
                onRun(runStart, first);
            }
            runStart = end;
        }
    }
    if (runStart < last) {
        onRun(runStart, last);
    }
}

/** Where all of them lie with their widths and arrows: links that lead back bulge out of the layout. */
[[nodiscard]] QRectF boundsOf(const std::vector<LinkPath> &paths);

} // namespace Vesk
