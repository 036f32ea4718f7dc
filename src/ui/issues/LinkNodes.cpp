#include "ui/issues/LinkNodes.h"

#include "ui/issues/LinkMesh.h"

#include <QPainter>
#include <QPainterPath>
#include <QQuickWindow>

#include <cstring>

namespace Vesk
{
namespace
{

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

void LinkMeshNode::setDrawing(const LinkDrawing &drawing, const LinkInk &ink, const QRectF &area,
                              QQuickWindow &window)
{
    const LinkMesh mesh = linkMesh(drawing, ink, area);
    m_geometry.allocate(static_cast<int>(mesh.vertices.size()), static_cast<int>(mesh.indices.size()));
    static_assert(sizeof(LinkVertex) == sizeof(QSGGeometry::TexturedPoint2D));
    std::memcpy(m_geometry.vertexData(), mesh.vertices.data(), mesh.vertices.size() * sizeof(LinkVertex));
    std::memcpy(m_geometry.indexDataAsUInt(), mesh.indices.data(),
                mesh.indices.size() * sizeof(std::uint32_t));
    m_texture.reset(window.createTextureFromImage(ink.image(), QQuickWindow::TextureHasAlphaChannel));
    m_material.setTexture(m_texture.get());
    markDirty(DirtyGeometry | DirtyMaterial);
}

void LinkPainterNode::setDrawing(std::shared_ptr<const LinkDrawing> drawing, const LinkColors &colors,
                                 const QRectF &bounds)
{
    m_tiles.setDrawing(std::move(drawing), colors);
    noteChanged(bounds);
}

void LinkPainterNode::paint(QPainter &painter, const QRectF &area)
{
    m_tiles.paint(painter, painter.deviceTransform().mapRect(area).toAlignedRect());
}

qsizetype paintLinks(QPainter &painter, const LinkDrawing &drawing, const LinkColors &colors,
                     const QRectF &area)
{
    const double pixel = 1 / painter.deviceTransform().m11();
    qsizetype drawn = 0;
    for (const LinkDrawing::Line &line : drawing.lines) {
        const LinkPath &path = drawing.path(line);
        const auto inked = [&](double opacity) {
            QColor color = colors.at(static_cast<size_t>(path.tone));
            color.setAlphaF(color.alphaF() * static_cast<float>(opacity));
            return color;
        };
        const IssueLinkCurves::Stroke stroke = strokeAtScale(line.stroke, pixel);
        QPainterPath part;
        forVisibleRuns(path, area, [&](size_t first, size_t last) {
            for (size_t at = first; at < last; ++at) {
                addPiece(part, path, at, stroke.dashed);
            }
        });
        if (!part.isEmpty()) {
            painter.strokePath(
                part, {inked(stroke.opacity), stroke.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin});
            drawn += part.elementCount();
        }
        if (path.arrowBounds().intersects(area)) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(inked(line.stroke.opacity));
            painter.drawConvexPolygon(path.arrow.data(), static_cast<int>(path.arrow.size()));
            drawn += static_cast<qsizetype>(path.arrow.size());
        }
    }
    return drawn;
}

} // namespace Vesk
