// What the cards of a dependency graph say, where the arrows lead among them, and which of them are in sight.
#pragma once

#include "issues/IssueGraphLayout.h"

#include <QRectF>
#include <QString>

namespace Vesk::GraphCards
{

enum class Tone { Plain, Ready, Waiting, Blocked };

/** The words at the right of a card's first line. */
struct Note {
    QString text;
    Tone tone = Tone::Plain;
    bool operator==(const Note &) const = default;
};
[[nodiscard]] Note note(const IssueGraph::Node &node);

enum class Direction { Left, Right, Up, Down };

/**
 * The key of the card on that side: to the left and right along a link, the nearest of several; without a
 * link the nearest card of the next column. Up and down in the same column. The same key where nothing is;
 * the first card for a key that the layout does not have.
 */
[[nodiscard]] QString neighbour(const IssueGraph::Layout &layout, const QString &key, Direction direction);

/**
 * What has delegates while `sight`, in points of the layout, is seen. It moves in steps, so that most frames
 * of a pan change nothing, and is hardly wider: what is held out of sight makes every frame slower. Null for
 * an empty sight.
 */
[[nodiscard]] QRectF heldWindow(const QRectF &sight);

} // namespace Vesk::GraphCards
