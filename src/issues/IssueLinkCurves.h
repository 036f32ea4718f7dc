// How the links of a layout are drawn, as values: a drawing surface has nothing to decide.
#pragma once

#include "issues/IssueGraphLayout.h"

#include <QList>
#include <QPointF>
#include <QSet>
#include <QString>

#include <array>
#include <optional>

namespace Vesk::IssueLinkCurves
{

/** A cubic curve. */
struct Cubic {
    QPointF start;
    QPointF control1;
    QPointF control2;
    QPointF end;

    bool operator==(const Cubic &) const = default;
};

enum class Tone { Backward, Open, Resolved };

/** A line with round ends and joins. Lengths in points. */
struct Stroke {
    double width = 1;
    double opacity = 1;
    bool dashed = false;

    bool operator==(const Stroke &) const = default;
};

inline constexpr double dashOn = 3;
inline constexpr double dashOff = 4;

/** A link's turn to be drawn. */
struct Turn {
    qsizetype link = 0; ///< its place in the layout
    bool focused = true;

    bool operator==(const Turn &) const = default;
};

/** The pieces of a link, one after the other, each beginning where the one before ended. */
[[nodiscard]] QList<Cubic> cubics(const IssueGraph::Link &link);

[[nodiscard]] Tone tone(const IssueGraph::Link &link);

/** A link is unfocused while a chain is chosen that it is no part of. */
[[nodiscard]] Stroke stroke(const IssueGraph::Link &link, bool focused);

/** The corners of the filled head, the tip first. */
[[nodiscard]] std::array<QPointF, 3> arrowHead(const IssueGraph::Link &link);

/** What is drawn, from the bottom up: with a chain, of keys, its own links last. */
[[nodiscard]] QList<Turn> drawOrder(const QList<IssueGraph::Link> &links,
                                    const std::optional<QSet<QString>> &chain, bool showsResolved);

} // namespace Vesk::IssueLinkCurves
