#include "ui/issues/LinkInk.h"

#include "ui/issues/LinkPaths.h"

#include <algorithm>
#include <cmath>

namespace Vesk
{
namespace
{

using IssueLinkCurves::Stroke;
using IssueLinkCurves::Tone;

constexpr int profileRows = 16;
constexpr int bandRows = profileRows + 2; // nothing above and below, so that neighbours do not shine through
constexpr int inkTones = 3;
constexpr int inkStrokes = 4; // open or resolved, focused or not
constexpr int bandsOfStroke = 2;

Stroke strokeAt(int number)
{
    IssueGraph::Link link;
    link.resolved = number % 2 == 1;
    return IssueLinkCurves::stroke(link, number / 2 == 1);
}

int bandOf(Tone tone, const Stroke &stroke, bool dashes)
{
    int number = 0;
    while (number < inkStrokes - 1 && !(strokeAt(number) == stroke)) {
        ++number;
    }
    return (static_cast<int>(tone) * inkStrokes + number) * bandsOfStroke + (dashes ? 1 : 0);
}

} // namespace

DrawnLine lineAtScale(const Stroke &asked, double pixel)
{
    const Stroke stroke = strokeAtScale(asked, pixel);
    const double width = std::max(stroke.width, pixel);
    return {
        .halfWidth = width / 2, .opacity = stroke.opacity * stroke.width / width, .dashed = stroke.dashed};
}

double distanceFromDash(double along)
{
    using namespace IssueLinkCurves;
    const double place = std::fmod(along, dashOn + dashOff);
    return place > dashOn ? std::min(place - dashOn, dashOn + dashOff - place) : 0;
}

LinkInk::LinkInk(const LinkColors &colors, double pixel)
    : m_pixel(pixel)
{
    constexpr double columnsPerPixel = 2;
    constexpr int mostColumns = 512;
    const int columns =
        std::clamp(static_cast<int>(std::ceil(period() / pixel * columnsPerPixel)), 4, mostColumns);
    m_image = QImage(columns, inkTones * inkStrokes * bandsOfStroke * bandRows,
                     QImage::Format_ARGB32_Premultiplied);
    m_image.fill(Qt::transparent);
    for (int tone = 0; tone < inkTones; ++tone) {
        for (int number = 0; number < inkStrokes; ++number) {
            const Stroke stroke = strokeAt(number);
            const QColor &color = colors.at(static_cast<size_t>(tone));
            drawBand(bandOf(static_cast<Tone>(tone), stroke, false), color, stroke, false);
            drawBand(bandOf(static_cast<Tone>(tone), stroke, true), color, stroke, true);
        }
    }
}

void LinkInk::drawBand(int band, const QColor &color, const Stroke &asked, bool wantsDashes)
{
    const DrawnLine line =
        lineAtScale({.width = asked.width, .opacity = asked.opacity, .dashed = wantsDashes}, m_pixel);
    const double opacity = line.opacity * color.alphaF();
    for (int row = 0; row < profileRows; ++row) {
        const double across = ((row + 0.5) / profileRows * 2 - 1) * (line.halfWidth + m_pixel / 2);
        auto *const pixels = reinterpret_cast<QRgb *>(m_image.scanLine(band * bandRows + 1 + row));
        for (int column = 0; column < m_image.width(); ++column) {
            const double along = (column + 0.5) / m_image.width() * period();
            // Dashes end round: what counts is the distance from the middle line of the nearest one.
            const double beside = line.dashed ? distanceFromDash(along) : 0;
            const double cover =
                std::clamp((line.halfWidth - std::hypot(beside, across)) / m_pixel + 0.5, 0.0, 1.0);
            pixels[column] = qPremultiply(qRgba(color.red(), color.green(), color.blue(),
                                                static_cast<int>(std::lround(cover * opacity * 255))));
        }
    }
}

double LinkInk::reach(const Stroke &stroke) const
{
    return lineAtScale(stroke, m_pixel).halfWidth + m_pixel / 2;
}

LinkInk::Band LinkInk::band(int number) const
{
    const auto height = static_cast<float>(m_image.height());
    const auto top = static_cast<float>(number * bandRows + 1);
    return {.top = top / height, .bottom = (top + profileRows) / height};
}

LinkInk::Band LinkInk::solid(Tone tone, const Stroke &stroke) const
{
    return band(bandOf(tone, stroke, false));
}

LinkInk::Band LinkInk::dashed(Tone tone, const Stroke &stroke) const
{
    return band(bandOf(tone, stroke, true));
}

} // namespace Vesk
