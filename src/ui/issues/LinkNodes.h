// The links of a graph in the scene: as triangles where there is a graphics processor, else by a painter.
#pragma once

#include "ui/issues/LinkInk.h"
#include "ui/issues/LinkPaths.h"
#include "ui/issues/LinkTiles.h"
#include "ui/issues/PainterNode.h"

#include <QRectF>
#include <QSGGeometryNode>
#include <QSGTexture>
#include <QSGTextureMaterial>

#include <memory>
#include <vector>

class QPainter;
class QQuickWindow;

namespace Vesk
{

/** Triangles that are made once and then moved and scaled with the item. */
class LinkMeshNode : public QSGGeometryNode
{
public:
    LinkMeshNode();

    void setDrawing(const LinkDrawing &drawing, const LinkInk &ink, const QRectF &area, QQuickWindow &window);

private:
    QSGGeometry m_geometry;
    QSGTextureMaterial m_material;
    std::unique_ptr<QSGTexture> m_texture;
};

/** Draws what the part of the window to be drawn anew holds. */
class LinkPainterNode : public PainterNode
{
public:
    using PainterNode::PainterNode;

    void setDrawing(std::shared_ptr<const LinkDrawing> drawing, const LinkColors &colors,
                    const QRectF &bounds);

protected:
    void paint(QPainter &painter, const QRectF &area) override;

private:
    LinkTiles m_tiles;
};

} // namespace Vesk
