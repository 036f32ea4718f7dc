// What a painter has drawn of the links, in squares that are kept while the picture is moved.
#pragma once

#include "ui/issues/LinkInk.h"
#include "ui/issues/LinkPaths.h"

#include <QHash>
#include <QImage>
#include <QPoint>
#include <QRect>

#include <memory>

class QPainter;

namespace Vesk
{

/** Squares lie on a grid that begins where the layout does, one pixel of theirs on one of the screen. */
class LinkTiles
{
public:
    static constexpr int side = 256;

    void setDrawing(std::shared_ptr<const LinkDrawing> drawing, const LinkColors &colors);

    /** Draws what lies in `area`, in pixels of the screen, with the painter's own transform, which scales and
        moves, no more. Returns how many squares had to be drawn for that. */
    int paint(QPainter &painter, const QRect &area);

    [[nodiscard]] qsizetype count() const { return m_tiles.size(); }

private:
    struct Tile {
        QImage sheet; // null where nothing is
        QPoint corner;
    };

    void draw(const QRect &block);

    std::shared_ptr<const LinkDrawing> m_drawing;
    LinkColors m_colors;
    double m_scale = 0;          // at which the squares were drawn
    QHash<QPoint, Tile> m_tiles; // by column and row
};

} // namespace Vesk
