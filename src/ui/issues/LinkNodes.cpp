#include "ui/issues/LinkNodes.h"

#include "ui/issues/LinkMesh.h"

#include <QPainter>
#include <QQuickWindow>

#include <cstring>

namespace Vesk
{

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

} // namespace Vesk
