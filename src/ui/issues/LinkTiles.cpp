#include "ui/issues/LinkTiles.h"

#include "ui/issues/LinkNodes.h"

#include <QPainter>

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

QImage LinkTiles::drawn(QPoint tile) const
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-tile * side);
    painter.scale(m_scale, m_scale);
    const QRectF area(QPointF(tile * side) / m_scale, QSizeF(side, side) / m_scale);
    return paintLinks(painter, *m_drawing, m_colors, area) > 0 ? image : QImage();
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
    painter.save();
    painter.setTransform(place.inverted() * painter.transform()); // to pixels of the screen
    int fresh = 0;
    for (int row = first.y(); row <= last.y(); ++row) {
        for (int column = first.x(); column <= last.x(); ++column) {
            const QPoint tile(column, row);
            auto known = m_tiles.constFind(tile);
            if (known == m_tiles.cend()) {
                known = m_tiles.insert(tile, drawn(tile));
                ++fresh;
            }
            if (!known->isNull()) {
                painter.drawImage(origin + tile * side, *known);
            }
        }
    }
    painter.restore();
    return fresh;
}

} // namespace Vesk
