// The sketches of a graph's cards in the scene: as triangles where there is a graphics processor, else by a
// painter.
#pragma once

#include "ui/issues/CardSketch.h"
#include "ui/issues/PainterNode.h"

#include <QHash>
#include <QSGGeometryNode>
#include <QSGTexture>
#include <QSGTextureMaterial>
#include <QSGVertexColorMaterial>

#include <memory>
#include <vector>

class QPainter;
class QQuickWindow;

namespace Vesk
{

using CardSketches = std::shared_ptr<const std::vector<CardSketch>>;

/** Triangles for one zoom: all rectangles, and above them all marks. */
class CardSketchMeshNode : public QSGNode
{
public:
    CardSketchMeshNode();

    void setCards(const std::vector<CardSketch> &cards, const SketchColors &colors, double pixel,
                  QQuickWindow &window);

private:
    void fillParts(const std::vector<CardSketch> &cards, const SketchColors &colors, double pixel);
    void fillMarks(const std::vector<CardSketch> &cards, double pixel);
    void renewMarks(const SketchColors &colors, double pixel, QQuickWindow &window);

    QSGGeometry m_partGeometry;
    QSGVertexColorMaterial m_partMaterial;
    QSGGeometryNode m_parts;
    QSGGeometry m_markGeometry;
    QSGTextureMaterial m_markMaterial;
    QSGGeometryNode m_marks;
    std::unique_ptr<QSGTexture> m_texture; // plain marks in one row, faded ones below
    SketchColors m_colors;
    int m_markPixels = 0;
};

/** The pictures of marks at one size, made when they are first drawn. */
class CardMarkImages
{
public:
    /** Forgets what was made for others. */
    void setLook(const SketchColors &colors, int pixels);
    [[nodiscard]] const QImage &image(int status, bool faded);

private:
    SketchColors m_colors;
    int m_pixels = 0;
    QHash<std::pair<int, bool>, QImage> m_images;
};

/** Draws in whole pixels what the part of the window to be drawn anew holds. */
class CardSketchPainterNode : public PainterNode
{
public:
    using PainterNode::PainterNode;

    void setCards(CardSketches cards, const SketchColors &colors, const QRectF &bounds);

protected:
    void paint(QPainter &painter, const QRectF &area) override;

private:
    CardSketches m_cards;
    SketchColors m_colors;
    CardMarkImages m_markImages;
};

/** Draws the cards that reach into `area`, in points of the layout, and returns how many those are. The
    painter's transform scales and moves, no more. */
int paintSketches(QPainter &painter, const std::vector<CardSketch> &cards, const SketchColors &colors,
                  CardMarkImages &marks, const QRectF &area);

} // namespace Vesk
