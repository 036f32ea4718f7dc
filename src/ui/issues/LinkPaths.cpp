#include "ui/issues/LinkPaths.h"

#include <algorithm>
#include <cmath>

namespace Vesk
{
namespace
{

constexpr double pathTolerance = 0.25;
constexpr double lineMargin = 6; // what a line and its arrow take up around its points

void addPoint(LinkPath &path, QPointF point)
{
    const QPointF step = path.points.empty() ? QPointF() : point - path.points.back();
    path.lengths.push_back((path.lengths.empty() ? 0 : path.lengths.back()) + std::hypot(step.x(), step.y()));
    path.points.push_back(point);
}

/** Halves the curve until its parts are as good as straight. */
void addCurve(LinkPath &path, const IssueLinkCurves::Cubic &curve, double tolerance)
{
    struct Part {
        IssueLinkCurves::Cubic curve;
        int depth;
    };
    constexpr int deepest = 10;
    std::vector<Part> parts {{curve, 0}};
    while (!parts.empty()) {
        const auto [part, depth] = parts.back();
        parts.pop_back();
        const double off = std::max(distanceFromChord(part.control1, part.start, part.end),
                                    distanceFromChord(part.control2, part.start, part.end));
        // A curve stays within three quarters of the distance of its control points.
        if (off * 0.75 <= tolerance || depth == deepest) {
            addPoint(path, part.end);
            continue;
        }
        const auto middle = [](QPointF left, QPointF right) { return (left + right) / 2; };
        const QPointF first = middle(part.start, part.control1);
        const QPointF second = middle(part.control1, part.control2);
        const QPointF third = middle(part.control2, part.end);
        const QPointF before = middle(first, second);
        const QPointF after = middle(second, third);
        const QPointF centre = middle(before, after);
        parts.push_back({{centre, after, third, part.end}, depth + 1});
        parts.push_back({{part.start, first, before, centre}, depth + 1});
    }
}

} // namespace

double distanceFromChord(QPointF point, QPointF start, QPointF end)
{
    const QPointF chord = end - start;
    const QPointF way = point - start;
    const double length = std::hypot(chord.x(), chord.y());
    return length > 0 ? std::abs(chord.x() * way.y() - chord.y() * way.x()) / length
                      : std::hypot(way.x(), way.y());
}

IssueLinkCurves::Stroke strokeAtScale(const IssueLinkCurves::Stroke &stroke, double pixel)
{
    using namespace IssueLinkCurves;
    if (!stroke.dashed || pixel < dashOff) {
        return stroke;
    }
    return {.width = stroke.width, .opacity = stroke.opacity * dashOn / (dashOn + dashOff)};
}

LinkPath linkPath(const IssueGraph::Link &link, double tolerance)
{
    LinkPath path {.points = {},
                   .lengths = {},
                   .arrow = IssueLinkCurves::arrowHead(link),
                   .bounds = {},
                   .tone = IssueLinkCurves::tone(link)};
    for (const IssueLinkCurves::Cubic &curve : IssueLinkCurves::cubics(link)) {
        if (path.points.empty()) {
            addPoint(path, curve.start);
        }
        addCurve(path, curve, tolerance);
    }
    if (!path.points.empty()) {
        path.bounds = pointsBounds(path, 0, path.points.size() - 1)
                          .adjusted(-lineMargin, -lineMargin, lineMargin, lineMargin);
    }
    return path;
}

size_t nextNeeded(const LinkPath &path, size_t at, size_t last, double pixel)
{
    constexpr double unseen = 0.25; // of a pixel
    size_t next = at + 1;
    while (next < last
           && distanceFromChord(path.points[(at + next + 1) / 2], path.points[at], path.points[next + 1])
               < unseen * pixel) {
        ++next;
    }
    return next;
}

QRectF pointsBounds(const LinkPath &path, size_t first, size_t last)
{
    constexpr double thickness = 1e-3; // a level line is no empty area
    double left = path.points[first].x(), right = left, top = path.points[first].y(), bottom = top;
    for (size_t at = first + 1; at <= last; ++at) {
        left = std::min(left, path.points[at].x());
        right = std::max(right, path.points[at].x());
        top = std::min(top, path.points[at].y());
        bottom = std::max(bottom, path.points[at].y());
    }
    return {QPointF(left, top), QPointF(right + thickness, bottom + thickness)};
}

std::vector<LinkPath> linkPaths(const QList<IssueGraph::Link> &links)
{
    std::vector<LinkPath> paths;
    paths.reserve(static_cast<size_t>(links.size()));
    for (const IssueGraph::Link &link : links) {
        paths.push_back(linkPath(link, pathTolerance));
    }
    return paths;
}

QRectF boundsOf(const std::vector<LinkPath> &paths)
{
    QRectF bounds;
    for (const LinkPath &path : paths) {
        bounds |= path.bounds;
    }
    return bounds;
}

} // namespace Vesk
