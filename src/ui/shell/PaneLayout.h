// Where the panes of a tree lie in the window, and what lies under a point or beside a pane.
#pragma once

#include "ui/shell/PaneTree.h"

#include <QRectF>
#include <QSizeF>

#include <optional>

namespace Vesk
{

/** Pixels throughout. */
struct PaneLayout {
    struct Pane {
        int id = 0;
        QRectF rect;
    };
    struct Split {
        int id = 0;
        bool sideBySide = true;
        QRectF line;
        double value = 0; ///< the extent of the first part, and its limits
        double from = 0;
        double to = 0;
        double extent = 0; ///< of both parts together
    };
    QList<Pane> panes; ///< in the order of PaneTree::panes()
    QList<Split> splits;

    [[nodiscard]] QRectF rectOf(int pane) const;
};

inline constexpr double paneLine = 1;
/** What a pane shall have at least; where the window has less, everybody goes short by the same share. */
inline constexpr QSizeF leastPane {280, 260};

[[nodiscard]] PaneLayout layoutPanes(const PaneTree &tree, const QSizeF &size);

/** The pane on this side, with the longest common edge of the nearest; 0 for none. */
[[nodiscard]] int paneBeside(const PaneLayout &layout, int pane, PaneSide side);

/** A pane of this extent can give half of itself away. */
[[nodiscard]] bool hasRoomToSplit(const QSizeF &pane, PaneSide side);

/** What happens to a tab that is let go at a point. */
struct PaneDrop {
    int pane = 0;                 ///< 0: nothing
    bool onStrip = false;         ///< among the tabs there, at a place that the strip knows
    std::optional<PaneSide> side; ///< into a new pane on this side
    QRectF mark;
};

/** `strip`: the height of the tabs at the top of every pane. */
[[nodiscard]] PaneDrop paneDropAt(const PaneTree &tree, const PaneLayout &layout, const QUuid &session,
                                  const QPointF &point, double strip);

} // namespace Vesk
