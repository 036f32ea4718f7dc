// The dependency graph as a picture: cards in columns from left to right, links between them.
#pragma once

#include "issues/IssueGraph.h"

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace Vesk::IssueGraph
{

/** Lengths in points; the origin is at the top left. */
namespace Measures
{
inline constexpr double cardWidth = 210;
inline constexpr double cardHeight = 56;
inline constexpr double columnGap = 76;
inline constexpr double columnPitch = cardWidth + columnGap;
inline constexpr double cardGap = 14;
inline constexpr double cardPitch = cardHeight + cardGap;
inline constexpr double margin = 24;    ///< on all sides
inline constexpr double lanePitch = 13; ///< what a link takes up in a column that it only passes
inline constexpr double laneMiddle = 6.5;
} // namespace Measures

/** A card. */
struct Placement {
    Node node;
    int column = 0;
    int row = 0; ///< among the cards of its column
    QRectF frame;

    bool operator==(const Placement &) const = default;
};

struct Link {
    QString from {}; ///< keys
    QString to {};
    QList<QPointF> points {}; ///< from card to card, with one in each column between
    bool resolved = false;
    bool struck = false;
    bool backward = false; ///< leads to the same column or one further left

    bool operator==(const Link &) const = default;
};

struct Layout {
    QList<Placement> placements; ///< column by column, from the top
    QList<Link> links;           ///< in the order of the edges
    QSizeF size {0, 0};

    bool operator==(const Layout &) const = default;
};

/** The same picture for the same graph. Empty without nodes that take part in an edge. */
[[nodiscard]] Layout layout(const Graph &graph);

} // namespace Vesk::IssueGraph
