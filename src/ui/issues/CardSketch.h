// A card of the graph where its words cannot be read: an outline, its mark, and bars for the words.
#pragma once

#include "issues/IssueGraphLayout.h"

#include <QColor>
#include <QImage>
#include <QRectF>

#include <array>
#include <vector>

namespace Vesk
{

/** One card. Lengths in the layout's points. */
struct CardSketch {
    QRectF frame;
    int status = 0;       ///< number in IssueStatus::Kind
    int tone = 0;         ///< number in GraphCards::Tone
    double idWidth = 0;   ///< of the words, as far as letters can be guessed
    double noteWidth = 0; ///< none without a note
    double titleWidth = 0;
    bool settled = false;
    bool faded = false; ///< outside the chain in focus
    bool focused = false;
    bool hovered = false;

    bool operator==(const CardSketch &) const = default;

    /** Without what depends on focus and pointer. */
    [[nodiscard]] static CardSketch of(const IssueGraph::Placement &placement);
};

/** What sketches are drawn with; all of them opaque. */
struct SketchColors {
    QColor paper; ///< behind the graph
    QColor ground;
    QColor settledGround;
    QColor hoveredGround;
    QColor edge;
    QColor focusedEdge;
    QColor text;
    QColor settledText;
    std::array<QColor, 4> tones;    ///< by GraphCards::Tone
    std::array<QColor, 8> statuses; ///< by IssueStatus::Kind

    bool operator==(const SketchColors &) const = default;
};

/** A rectangle of one colour. */
struct SketchPart {
    QRectF rect;
    QRgb color = 0;
};

/** From the bottom up: two for the edge, with its corners left out, the ground, and three bars, empty ones
    among them. `pixel` is the side of a pixel of the screen in points. */
[[nodiscard]] std::array<SketchPart, 6> sketchParts(const CardSketch &card, const SketchColors &colors,
                                                    double pixel);

/** Where the mark stands: as in a card that can be read, but never too small to be told from others. */
[[nodiscard]] QRectF sketchMark(const CardSketch &card, double pixel);

/** The side of every mark, in pixels of the screen. */
[[nodiscard]] int sketchMarkPixels(double pixel);

/** The mark of a status at that size. */
[[nodiscard]] QImage sketchMarkImage(int status, bool faded, const SketchColors &colors, int pixels);

} // namespace Vesk
