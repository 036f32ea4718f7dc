#include "ui/issues/LinkTiles.h"

#include "ui/issues/LinkRaster.h"

#include <QPainter>
#include <QRegion>

#include <cmath>

namespace Vesk
{

void LinkTiles::setDrawing(std::shared_ptr<const LinkDrawing> drawing, const LinkColors &colors)
{
    if (m_drawing != drawing || m_colors != colors) {
        m_drawing = std::move(drawing);
        m_colors = colors;
        m_tiles.clear();
    }
}

/** All squares of a block at one go: most lines cross several of them. */
void LinkTiles::draw(const QRect &block)
{
    QImage sheet(block.size() * side, QImage::Format_ARGB32_Premultiplied);
    sheet.fill(Qt::transparent);
    const bool isEmpty = paintLinks(sheet, block.topLeft() * side, m_scale, *m_drawing, m_colors) == 0;
    for (int row = block.top(); row <= block.bottom(); ++row) {
        for (int column = block.left(); column <= block.right(); ++column) {
            const QPoint tile(column, row);
            m_tiles.insert(tile, isEmpty ? Tile() : Tile {sheet, (tile - block.topLeft()) * side});
        }
    }
}

int LinkTiles::paint(QPainter &painter, const QRect &area)
{
    const QTransform place = painter.deviceTransform();
    if (m_scale != place.m11()) {
        m_scale = place.m11();
        m_tiles.clear();
    }
    // Between two pixels nothing can stand: what is drawn once has to serve wherever the picture is.
    const QPoint origin(static_cast<int>(std::lround(place.dx())), static_cast<int>(std::lround(place.dy())));
    const auto tileAt = [](int at) { return static_cast<int>(std::floor(static_cast<double>(at) / side)); };
    const QRect seen = area.translated(-origin);
    const QPoint first(tileAt(seen.left()), tileAt(seen.top()));
    const QPoint last(tileAt(seen.right()), tileAt(seen.bottom()));
    // One more all around is kept, for who turns back.
    m_tiles.removeIf([around = QRect(first, last).adjusted(-1, -1, 1, 1)](const auto &entry) {
        return !around.contains(entry.key());
    });
    const auto forTiles = [&](auto onTile) {
        for (int row = first.y(); row <= last.y(); ++row) {
            for (int column = first.x(); column <= last.x(); ++column) {
                onTile(QPoint(column, row));
            }
        }
    };
    QRegion missing;
    forTiles([&](QPoint tile) {
        if (!m_tiles.contains(tile)) {
            missing += QRect(tile, QSize(1, 1));
        }
    });
    int fresh = 0;
    for (const QRect &block : missing) {
        draw(block);
        fresh += block.width() * block.height();
    }
    painter.save();
    painter.setTransform(place.inverted() * painter.transform()); // to pixels of the screen
    forTiles([&](QPoint tile) {
        if (const Tile &known = *m_tiles.constFind(tile); !known.sheet.isNull()) {
            painter.drawImage(origin + tile * side, known.sheet, QRect(known.corner, QSize(side, side)));
        }
    });
    painter.restore();
    return fresh;
}

} // namespace Vesk
