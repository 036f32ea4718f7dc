#include "ui/issues/CardSketch.h"

#include "ui/controls/IconProvider.h"
#include "ui/issues/GraphCards.h"

#include <algorithm>
#include <cmath>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

// As in IssueGraphCard.qml.
constexpr double inset = 10;
constexpr double afterMark = 6;
constexpr double plainMark = 14;
constexpr double firstLine = 15; // the middle of it
constexpr double secondLine = 38;
constexpr double barHeight = 6;
constexpr double titleBarHeight = 8;
constexpr double fadedShare = 0.6;
// How much of a line of text is ink, seen from far away.
constexpr double inkShare = 0.45;

constexpr double smallestMark = 6; // pixels; smaller ones look all alike
constexpr double largestMark = 30; // points, about half the height of the card

double markSide(double pixel)
{
    return std::clamp(smallestMark * pixel, plainMark, largestMark);
}

/** From 0, where the mark is as in a card that can be read, to 1, where it is as large as it gets. */
double markGrowth(double pixel)
{
    return (markSide(pixel) - plainMark) / (largestMark - plainMark);
}

QColor between(const QColor &from, const QColor &to, double share)
{
    const auto channel = [share](int low, int high) {
        return static_cast<int>(std::lround(low + (high - low) * share));
    };
    return QColor(channel(from.red(), to.red()), channel(from.green(), to.green()),
                  channel(from.blue(), to.blue()));
}

double guessedWidth(const QString &text, double narrow, double wide)
{
    constexpr char16_t firstWide = 0x1100; // Hangul and all that follows
    double width = 0;
    for (const QChar c : text) {
        width += c.unicode() < firstWide ? narrow : wide;
    }
    return width;
}

} // namespace

CardSketch CardSketch::of(const IssueGraph::Placement &placement)
{
    const IssueGraph::Node &node = placement.node;
    const GraphCards::Note note = GraphCards::note(node);
    return {.frame = placement.frame,
            .status = static_cast<int>(node.status.kind),
            .tone = static_cast<int>(note.tone),
            .idWidth = guessedWidth(node.id, 7, 12),
            .noteWidth = guessedWidth(note.text, 5.5, 10),
            .titleWidth = guessedWidth(node.title, 6.5, 12),
            .settled = node.context || node.readiness == IssueGraph::Readiness::Settled};
}

std::array<SketchPart, 6> sketchParts(const CardSketch &card, const SketchColors &colors, double pixel)
{
    const QColor &ground = card.hovered ? colors.hoveredGround
        : card.settled                  ? colors.settledGround
                                        : colors.ground;
    const auto inked = [&](const QColor &color, double share) {
        const QColor mixed = between(ground, color, share);
        return (card.faded ? between(colors.paper, mixed, fadedShare) : mixed).rgb();
    };
    const QRectF &frame = card.frame;
    const double edge = card.focused ? 2 * pixel : pixel;
    const QRgb edgeColor = inked(card.focused ? colors.focusedEdge : colors.edge, 1);
    const QColor &text = card.settled ? colors.settledText : colors.text;

    const QRectF mark = sketchMark(card, pixel);
    const double right = frame.right() - inset;
    const double noteLeft = right - std::min(card.noteWidth, frame.width() * 0.6);
    const double idLeft = mark.right() + afterMark;
    const double idWidth = std::clamp(noteLeft - afterMark - idLeft, 0.0, card.idWidth);
    // When the mark comes down into the second line, the title has made way.
    const double titleWay = std::min(1.0, markGrowth(pixel) * 1.8);
    const double titleLeft = frame.left() + inset + (idLeft - frame.left() - inset) * titleWay;
    const auto bar = [&](double left, double middle, double width, double height) {
        const double drawn = std::max(height, pixel);
        return QRectF(left, frame.top() + middle - drawn / 2, width, drawn);
    };
    return {{{frame.adjusted(0, pixel, 0, -pixel), edgeColor},
             {frame.adjusted(pixel, 0, -pixel, 0), edgeColor},
             {frame.adjusted(edge, edge, -edge, -edge), inked(ground, 1)},
             {bar(idLeft, firstLine, idWidth, barHeight), inked(text, inkShare * 0.8)},
             {bar(noteLeft, firstLine, right - noteLeft, barHeight),
              inked(colors.tones.at(static_cast<size_t>(card.tone)), inkShare)},
             {bar(titleLeft, secondLine, std::clamp(right - titleLeft, 0.0, card.titleWidth), titleBarHeight),
              inked(text, inkShare)}}};
}

QRectF sketchMark(const CardSketch &card, double pixel)
{
    const double side = markSide(pixel);
    const double middle = firstLine + (card.frame.height() / 2 - firstLine) * markGrowth(pixel);
    return {card.frame.left() + inset, card.frame.top() + middle - side / 2, side, side};
}

int sketchMarkPixels(double pixel)
{
    return std::max(1, static_cast<int>(std::lround(markSide(pixel) / pixel)));
}

QImage sketchMarkImage(int status, bool faded, const SketchColors &colors, int pixels)
{
    static const std::array names {u"todo"_s, u"doing"_s,     u"blocked"_s, u"review"_s,
                                   u"done"_s, u"cancelled"_s, u"other"_s,   u"unset"_s};
    const auto at = static_cast<size_t>(status);
    const QColor &color = colors.statuses.at(at);
    return renderIcon(u"status-"_s + names.at(at), faded ? between(colors.paper, color, fadedShare) : color,
                      {pixels, pixels});
}

} // namespace Vesk
