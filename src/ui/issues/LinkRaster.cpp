#include "ui/issues/LinkRaster.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace Vesk
{
namespace
{

/** A point of a line in pixels of the picture, and how far along the line that is, in points of the layout.
 */
struct Stop {
    QPointF at;
    double along = 0;
};

/** Where a straight piece ends and the next begins: the line between the two halves the angle between them.
 */
using Border = std::optional<QPointF>;

double dot(QPointF a, QPointF b)
{
    return a.x() * b.x() + a.y() * b.y();
}

QPointF unit(QPointF way)
{
    const double length = std::hypot(way.x(), way.y());
    return length > 0 ? way / length : QPointF();
}

/** Every channel of a premultiplied colour, by `share` of 255. */
QRgb faded(QRgb color, quint32 share)
{
    constexpr quint32 mask = 0xFF00FF;
    constexpr quint32 half = 0x800080;
    const auto rounded = [](quint32 two) { return (two + ((two >> 8) & mask) + half) >> 8; };
    const quint32 low = rounded((color & mask) * share) & mask;
    const quint32 high = rounded(((color >> 8) & mask) * share) & mask;
    return (high << 8) | low;
}

/** One line, piece by piece; every pixel is touched once, so that nothing shows where two pieces meet. */
class LineRaster
{
public:
    LineRaster(QImage &image, const IssueLinkCurves::Stroke &stroke, const QColor &color, double scale)
        : m_pixels(reinterpret_cast<QRgb *>(image.bits()))
        , m_pitch(image.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb)))
        , m_size(image.size())
        , m_line(lineAtScale(stroke, 1 / scale))
        , m_scale(scale)
        , m_halfWidth(m_line.halfWidth * scale)
        , m_color(color.rgb() | 0xFF000000)
        , m_strength(m_line.opacity * color.alphaF() * 255)
    {
    }

    void draw(const std::vector<Stop> &stops)
    {
        Border before;
        for (size_t at = 0; at + 1 < stops.size(); ++at) {
            const QPointF way = unit(stops[at + 1].at - stops[at].at);
            const Border after = at + 2 < stops.size()
                ? Border(unit(way + unit(stops[at + 2].at - stops[at + 1].at)))
                : std::nullopt;
            drawPiece(stops[at], stops[at + 1], way, before, after);
            before = after;
        }
    }

private:
    void drawPiece(const Stop &start, const Stop &end, QPointF way, Border before, Border after)
    {
        const double reach = m_halfWidth + 0.5;
        const bool isFlat = std::abs(way.x()) >= std::abs(way.y());
        // The longer axis is walked along pixel by pixel, and across it as far as the line reaches.
        const auto along = [isFlat](QPointF point) { return isFlat ? point.x() : point.y(); };
        const auto across = [isFlat](QPointF point) { return isFlat ? point.y() : point.x(); };
        if (along(way) == 0) {
            return;
        }
        const double slope = across(way) / along(way);
        const double extent = reach / std::abs(along(way));
        const double low = std::min(along(start.at), along(end.at));
        const double high = std::max(along(start.at), along(end.at));
        const int first = std::max(0, static_cast<int>(std::floor(low - reach)));
        const int last =
            std::min(isFlat ? m_size.width() : m_size.height(), static_cast<int>(std::ceil(high + reach)));
        const int most = isFlat ? m_size.height() : m_size.width();
        const double length = dot(end.at - start.at, way);
        for (int step = first; step < last; ++step) {
            const double middle = across(start.at) + (step + 0.5 - along(start.at)) * slope;
            const int from = std::max(0, static_cast<int>(std::ceil(middle - extent - 0.5)));
            const int to = std::min(most - 1, static_cast<int>(std::floor(middle + extent - 0.5)));
            for (int other = from; other <= to; ++other) {
                const QPoint pixel = isFlat ? QPoint(step, other) : QPoint(other, step);
                const QPointF fromStart = QPointF(pixel) + QPointF(0.5, 0.5) - start.at;
                const bool isOthers = (before && dot(fromStart, *before) < 0)
                    || (after && dot(fromStart - way * length, *after) >= 0);
                if (!isOthers) {
                    blend(pixel, distance(fromStart, way, length, start.along));
                }
            }
        }
    }

    /** Of a pixel's middle from what is drawn of the line. */
    [[nodiscard]] double distance(QPointF fromStart, QPointF way, double length, double startAlong) const
    {
        const double at = dot(fromStart, way);
        const double aside = way.x() * fromStart.y() - way.y() * fromStart.x();
        const double within = std::clamp(at, 0.0, length);
        const double gap = m_line.dashed ? distanceFromDash(startAlong + within / m_scale) * m_scale : 0;
        const double beside = std::abs(at - within) + gap;
        return beside > 0 ? std::hypot(aside, beside) : std::abs(aside);
    }

    void blend(QPoint pixel, double distance)
    {
        const double cover = std::clamp(m_halfWidth - distance + 0.5, 0.0, 1.0);
        if (const auto alpha = static_cast<quint32>(std::lround(cover * m_strength)); alpha > 0) {
            QRgb &below = m_pixels[pixel.y() * m_pitch + pixel.x()];
            below = faded(m_color, alpha) + faded(below, 255 - alpha);
        }
    }

    QRgb *m_pixels;
    qsizetype m_pitch;
    QSize m_size;
    DrawnLine m_line;
    double m_scale;
    double m_halfWidth; // in pixels
    QRgb m_color;
    double m_strength; // alpha where the line covers a pixel
};

} // namespace

qsizetype paintLinks(QImage &image, QPoint origin, double scale, const LinkDrawing &drawing,
                     const LinkColors &colors)
{
    constexpr double outside = 2; // pixels: what stands there may reach in
    const QRectF area(QPointF(origin) / scale, QSizeF(image.size()) / scale);
    const double margin = outside / scale;
    const QRectF wide = area.adjusted(-margin, -margin, margin, margin);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.translate(-origin);
    painter.scale(scale, scale);
    qsizetype drawn = 0;
    std::vector<Stop> stops;
    for (const LinkDrawing::Line &line : drawing.lines) {
        const LinkPath &path = drawing.path(line);
        if (!path.bounds.intersects(wide)) {
            continue;
        }
        QColor color = colors.at(static_cast<size_t>(path.tone));
        LineRaster raster(image, line.stroke, color, scale);
        forVisibleRuns(path, wide, [&](size_t first, size_t last) {
            stops.clear();
            for (size_t at = first; at <= last;) {
                stops.push_back({path.points[at] * scale - origin, path.lengths[at]});
                at = at < last ? nextNeeded(path, at, last, 1 / scale) : last + 1;
            }
            raster.draw(stops);
            drawn += static_cast<qsizetype>(stops.size());
        });
        if (path.arrowBounds().intersects(area)) {
            color.setAlphaF(color.alphaF() * static_cast<float>(line.stroke.opacity));
            painter.setBrush(color);
            painter.drawConvexPolygon(path.arrow.data(), static_cast<int>(path.arrow.size()));
            drawn += static_cast<qsizetype>(path.arrow.size());
        }
    }
    return drawn;
}

} // namespace Vesk
