#include "ui/issues/LinkMesh.h"

#include <algorithm>
#include <cmath>

namespace Vesk
{
namespace
{

/** The direction, one point long. */
QPointF direction(QPointF from, QPointF to)
{
    const QPointF way = to - from;
    const double length = std::hypot(way.x(), way.y());
    return length > 0 ? way / length : QPointF(1, 0);
}

class LinkMesher
{
public:
    LinkMesher(const LinkDrawing &drawing, const LinkInk &ink)
        : m_drawing(drawing)
        , m_ink(ink)
    {
        size_t points = 0;
        for (const LinkDrawing::Line &line : drawing.lines) {
            points += drawing.path(line).points.size();
        }
        m_mesh.vertices.reserve(2 * points + verticesBesides * drawing.lines.size());
        m_mesh.indices.reserve(6 * points + indicesBesides * drawing.lines.size());
    }

    LinkMesh run()
    {
        for (const LinkDrawing::Line &line : m_drawing.lines) {
            const LinkPath &path = m_drawing.path(line);
            if (path.points.size() > 1) {
                drawLine(path, line.stroke);
                drawArrow(path, line.stroke);
            }
        }
        return std::move(m_mesh);
    }

private:
    static constexpr size_t verticesBesides = 2 * 4 + 6; // caps and arrow
    static constexpr size_t indicesBesides = 2 * 6 + 21;

    [[nodiscard]] std::uint32_t nextVertex() const
    {
        return static_cast<std::uint32_t>(m_mesh.vertices.size());
    }
    void addVertex(QPointF place, double along, float v)
    {
        m_mesh.vertices.push_back({static_cast<float>(place.x()), static_cast<float>(place.y()),
                                   static_cast<float>(along / LinkInk::period()), v});
    }
    void addPair(QPointF middle, QPointF way, double along, LinkInk::Band band)
    {
        const QPointF aside = QPointF(-way.y(), way.x()) * m_reach;
        addVertex(middle - aside, along, band.top);
        addVertex(middle + aside, along, band.bottom);
    }
    /** Joins the last two pairs. */
    void fillQuad()
    {
        const std::uint32_t next = nextVertex();
        for (const std::uint32_t back : {4U, 3U, 2U, 3U, 1U, 2U}) {
            m_mesh.indices.push_back(next - back);
        }
    }

    void drawLine(const LinkPath &path, const IssueLinkCurves::Stroke &stroke);
    void drawArrow(const LinkPath &path, const IssueLinkCurves::Stroke &stroke);

    const LinkDrawing &m_drawing;
    const LinkInk &m_ink;
    LinkMesh m_mesh;
    double m_reach = 0; // of the line at hand
};

void LinkMesher::drawLine(const LinkPath &path, const IssueLinkCurves::Stroke &stroke)
{
    m_reach = m_ink.reach(stroke);
    const LinkInk::Band dashed = m_ink.dashed(path.tone, stroke);
    const LinkInk::Band band = stroke.dashed ? dashed : m_ink.solid(path.tone, stroke);
    // Round ends are taken from the ends of the dashes.
    const double cap = std::min(m_reach, IssueLinkCurves::dashOff / 2);
    const QPointF firstWay = direction(path.points[0], path.points[1]);
    addPair(path.points[0] - firstWay * cap, firstWay, -cap, dashed);
    addPair(path.points[0], firstWay, 0, dashed);
    fillQuad();

    QPointF before = firstWay;
    const size_t last = path.points.size() - 1;
    for (size_t at = 0; at <= last; ++at) {
        const QPointF after = at < last ? direction(path.points[at], path.points[at + 1]) : before;
        addPair(path.points[at], direction({}, before + after), path.lengths[at], band);
        if (at > 0) {
            fillQuad();
        }
        before = after;
    }

    const double inDash = std::fmod(path.lengths[last], LinkInk::period());
    if (!stroke.dashed || inDash < IssueLinkCurves::dashOn) {
        addPair(path.points[last], before, IssueLinkCurves::dashOn, dashed);
        addPair(path.points[last] + before * cap, before, IssueLinkCurves::dashOn + cap, dashed);
        fillQuad();
    }
}

void LinkMesher::drawArrow(const LinkPath &path, const IssueLinkCurves::Stroke &stroke)
{
    // Grown and shrunk about the centre of its inner circle, a triangle's sides move by the same distance.
    const auto &corners = path.arrow;
    std::array<double, 3> sides {};
    double around = 0;
    QPointF centre;
    for (size_t at = 0; at < 3; ++at) {
        const QPointF side = corners.at((at + 2) % 3) - corners.at((at + 1) % 3); // across from the corner
        sides.at(at) = std::hypot(side.x(), side.y());
        around += sides.at(at);
        centre += corners.at(at) * sides.at(at);
    }
    if (around <= 0) {
        return;
    }
    centre /= around;
    const QPointF one = corners[1] - corners[0];
    const QPointF two = corners[2] - corners[0];
    const double radius = std::abs(one.x() * two.y() - one.y() * two.x()) / around;
    const double edge = m_ink.pixel() / 2;
    const double inner = std::max(0.0, 1 - edge / radius);
    const double outer = 1 + edge / radius;

    const LinkInk::Band band = m_ink.solid(path.tone, stroke);
    const std::uint32_t first = nextVertex();
    for (const QPointF &corner : corners) {
        addVertex(centre + (corner - centre) * inner, 0, band.middle());
        addVertex(centre + (corner - centre) * outer, 0, band.top);
    }
    for (const std::uint32_t index :
         {0U, 2U, 4U, 0U, 1U, 2U, 1U, 3U, 2U, 2U, 3U, 4U, 3U, 5U, 4U, 4U, 5U, 0U, 5U, 1U, 0U}) {
        m_mesh.indices.push_back(first + index);
    }
}

} // namespace

LinkMesh linkMesh(const LinkDrawing &drawing, const LinkInk &ink)
{
    return LinkMesher(drawing, ink).run();
}

} // namespace Vesk
