#include "ui/issues/LinkNodes.h"

#include "ui/issues/LinkMesh.h"

#include <QPainter>
#include <QPainterPath>
#include <QQuickWindow>
#include <QSGRendererInterface>

#include <algorithm>
#include <cstring>

namespace Vesk
{
namespace
{

constexpr double widestHalf = 1; // of a line

bool mayShow(const QRectF &area, const std::vector<QPointF> &points, size_t first, size_t last)
{
    double left = points[first].x(), right = left, top = points[first].y(), bottom = top;
    for (size_t at = first + 1; at <= last; ++at) {
        left = std::min(left, points[at].x());
        right = std::max(right, points[at].x());
        top = std::min(top, points[at].y());
        bottom = std::max(bottom, points[at].y());
    }
    return right >= area.left() && left <= area.right() && bottom >= area.top() && top <= area.bottom();
}

/** Adds the piece from one point of a path to the next: all of it, or what its dashes cover. A painter's own
   dashes would depend on where the drawing begins. */
void addPiece(QPainterPath &drawn, const LinkPath &path, size_t at, bool dashed)
{
    const QPointF start = path.points[at];
    const QPointF end = path.points[at + 1];
    const auto add = [&drawn](QPointF from, QPointF to) {
        if (drawn.isEmpty() || drawn.currentPosition() != from) {
            drawn.moveTo(from);
        }
        drawn.lineTo(to);
    };
    if (!dashed) {
        add(start, end);
        return;
    }
    constexpr double period = IssueLinkCurves::dashOn + IssueLinkCurves::dashOff;
    const double startLength = path.lengths[at];
    const double endLength = path.lengths[at + 1];
    const auto place = [&](double length) {
        if (length <= startLength) {
            return start;
        }
        return length >= endLength
            ? end
            : start + (end - start) * ((length - startLength) / (endLength - startLength));
    };
    const auto firstDash = static_cast<int>(startLength / period);
    for (int dash = firstDash; dash * period < endLength; ++dash) {
        const double dashStart = dash * period;
        const double dashEnd = dashStart + IssueLinkCurves::dashOn;
        if (dashEnd > startLength) {
            add(place(dashStart), place(dashEnd));
        }
    }
}

/** The stretches of a path that may be seen in the area. */
QPainterPath visiblePart(const LinkPath &path, bool dashed, const QRectF &area)
{
    constexpr size_t stretch = 16;
    const size_t last = path.points.size() - 1;
    QPainterPath part;
    for (size_t first = 0; first < last; first += stretch) {
        const size_t end = std::min(last, first + stretch);
        if (mayShow(area, path.points, first, end)) {
            for (size_t at = first; at < end; ++at) {
                addPiece(part, path, at, dashed);
            }
        }
    }
    return part;
}

} // namespace

LinkMeshNode::LinkMeshNode()
    : m_geometry(QSGGeometry::defaultAttributes_TexturedPoint2D(), 0, 0, QSGGeometry::UnsignedIntType)
{
    m_geometry.setDrawingMode(QSGGeometry::DrawTriangles);
    m_material.setFiltering(QSGTexture::Linear);
    m_material.setHorizontalWrapMode(QSGTexture::Repeat);
    setGeometry(&m_geometry);
    setMaterial(&m_material);
}

void LinkMeshNode::setDrawing(const LinkDrawing &drawing, const LinkInk &ink, QQuickWindow &window)
{
    const LinkMesh mesh = linkMesh(drawing, ink);
    m_geometry.allocate(static_cast<int>(mesh.vertices.size()), static_cast<int>(mesh.indices.size()));
    static_assert(sizeof(LinkVertex) == sizeof(QSGGeometry::TexturedPoint2D));
    std::memcpy(m_geometry.vertexData(), mesh.vertices.data(), mesh.vertices.size() * sizeof(LinkVertex));
    std::memcpy(m_geometry.indexDataAsUInt(), mesh.indices.data(),
                mesh.indices.size() * sizeof(std::uint32_t));
    m_texture.reset(window.createTextureFromImage(ink.image(), QQuickWindow::TextureHasAlphaChannel));
    m_material.setTexture(m_texture.get());
    markDirty(DirtyGeometry | DirtyMaterial);
}

LinkPainterNode::LinkPainterNode(QQuickWindow &window, QRectF bounds)
    : m_window(window)
    , m_bounds(bounds)
{
}

void LinkPainterNode::setDrawing(std::shared_ptr<const LinkDrawing> drawing, const LinkColors &colors,
                                 QRectF bounds)
{
    m_drawing = std::move(drawing);
    m_colors = colors;
    m_bounds = bounds;
    markDirty(DirtyMaterial);
}

void LinkPainterNode::render(const RenderState *state)
{
    auto *const painter = static_cast<QPainter *>(
        m_window.rendererInterface()->getResource(&m_window, QSGRendererInterface::PainterResource));
    if (!painter || !m_drawing) {
        return;
    }
    painter->save();
    const QRegion *const clip = state->clipRegion();
    if (clip && !clip->isEmpty()) {
        painter->setClipRegion(*clip, Qt::ReplaceClip); // in pixels of the window, so before the transform
    }
    painter->setTransform(matrix()->toTransform());
    painter->setOpacity(inheritedOpacity());
    painter->setRenderHint(QPainter::Antialiasing);
    paintLinks(*painter, *m_drawing, m_colors, painter->clipBoundingRect().intersected(m_bounds));
    painter->restore();
}

qsizetype paintLinks(QPainter &painter, const LinkDrawing &drawing, const LinkColors &colors,
                     const QRectF &area)
{
    const QRectF wide = area.adjusted(-widestHalf, -widestHalf, widestHalf, widestHalf);
    const double pixel = 1 / painter.deviceTransform().m11();
    qsizetype drawn = 0;
    for (const LinkDrawing::Line &line : drawing.lines) {
        const LinkPath &path = drawing.path(line);
        if (path.points.size() < 2 || !path.bounds.intersects(area)) {
            continue;
        }
        const auto inked = [&](double opacity) {
            QColor color = colors.at(static_cast<size_t>(path.tone));
            color.setAlphaF(color.alphaF() * static_cast<float>(opacity));
            return color;
        };
        const IssueLinkCurves::Stroke stroke = strokeAtScale(line.stroke, pixel);
        if (const QPainterPath part = visiblePart(path, stroke.dashed, wide); !part.isEmpty()) {
            painter.strokePath(
                part, {inked(stroke.opacity), stroke.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin});
            drawn += part.elementCount();
        }
        if (path.arrowBounds().intersects(area)) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(inked(line.stroke.opacity));
            painter.drawConvexPolygon(path.arrow.data(), static_cast<int>(path.arrow.size()));
        }
    }
    return drawn;
}

} // namespace Vesk
