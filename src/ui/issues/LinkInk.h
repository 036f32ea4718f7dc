// The profiles of all strokes in one picture: a line with soft edges is then a plain strip of textured
// triangles, dashes cost nothing, and lines of all colours are drawn in their order at one go.
#pragma once

#include "issues/IssueLinkCurves.h"

#include <QColor>
#include <QImage>

#include <array>

namespace Vesk
{

/** By tone: backward, open, resolved. */
using LinkColors = std::array<QColor, 3>;

/** A stroke as pixels can show it. Lengths in points of the layout. */
struct DrawnLine {
    double halfWidth = 0;
    double opacity = 0;
    bool dashed = false;
};

/** `pixel` is the side of a pixel of the screen. A line thinner than that is drawn a pixel wide, and fainter.
 */
[[nodiscard]] DrawnLine lineAtScale(const IssueLinkCurves::Stroke &stroke, double pixel);

/** From a place so far along a dashed line to the nearest dash. */
[[nodiscard]] double distanceFromDash(double along);

/** To the right the picture goes along a line, a whole number of dashes and gaps, to be repeated; downwards
 * across it. */
class LinkInk
{
public:
    /** Vertical texture coordinates of a profile; between them the colour is strongest. */
    struct Band {
        float top = 0;
        float bottom = 0;

        [[nodiscard]] float middle() const { return (top + bottom) / 2; }
    };

    /** `pixel` is the side of a pixel of the screen in points of the layout. */
    LinkInk(const LinkColors &colors, double pixel);

    [[nodiscard]] const QImage &image() const { return m_image; }
    [[nodiscard]] double pixel() const { return m_pixel; }
    /** Points along a line that one width of the picture covers. */
    [[nodiscard]] static double period() { return IssueLinkCurves::dashOn + IssueLinkCurves::dashOff; }
    /** From the middle of a line to where nothing of it is left. */
    [[nodiscard]] double reach(const IssueLinkCurves::Stroke &stroke) const;
    [[nodiscard]] Band solid(IssueLinkCurves::Tone tone, const IssueLinkCurves::Stroke &stroke) const;
    [[nodiscard]] Band dashed(IssueLinkCurves::Tone tone, const IssueLinkCurves::Stroke &stroke) const;

private:
    void drawBand(int band, const QColor &color, const IssueLinkCurves::Stroke &asked, bool wantsDashes);
    [[nodiscard]] Band band(int number) const;

    double m_pixel;
    QImage m_image;
};

} // namespace Vesk
