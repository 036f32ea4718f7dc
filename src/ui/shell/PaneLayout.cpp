#include "ui/shell/PaneLayout.h"

#include <algorithm>
#include <cmath>

namespace Vesk
{

namespace
{

/** So much of a pane's body, from each edge, splits it; the middle takes a tab in. */
constexpr double edgeShare = 0.25;

bool isAcross(PaneSide side)
{
    return side == PaneSide::Left || side == PaneSide::Right;
}

QSizeF leastSize(const PaneNode &node)
{
    if (node.isPane()) {
        return leastPane;
    }
    const QSizeF a = leastSize(node.parts[0]);
    const QSizeF b = leastSize(node.parts[1]);
    return node.direction == Qt::Horizontal
        ? QSizeF(a.width() + b.width() + paneLine, std::max(a.height(), b.height()))
        : QSizeF(std::max(a.width(), b.width()), a.height() + b.height() + paneLine);
}

void place(const PaneNode &node, const QRectF &rect, PaneLayout &layout)
{
    if (node.isPane()) {
        layout.panes.append({.id = node.id, .rect = rect});
        return;
    }
    const bool across = node.direction == Qt::Horizontal;
    const auto length = [across](const auto &size) { return across ? size.width() : size.height(); };
    const double least = length(leastSize(node.parts[0]));
    const double leastAfter = length(leastSize(node.parts[1]));
    PaneLayout::Split split;
    split.id = node.id;
    split.sideBySide = across;
    split.extent = std::max(0.0, length(rect) - paneLine);
    if (split.extent >= least + leastAfter) {
        split.from = least;
        split.to = split.extent - leastAfter;
        split.value = std::clamp(std::round(node.ratio * split.extent), split.from, split.to);
    } else {
        split.value = split.from = split.to = std::round(split.extent * least / (least + leastAfter));
    }
    QRectF first = rect;
    QRectF second = rect;
    split.line = rect;
    if (across) {
        first.setWidth(split.value);
        split.line.setLeft(first.right());
        split.line.setWidth(paneLine);
        second.setLeft(std::min(split.line.right(), rect.right()));
    } else {
        first.setHeight(split.value);
        split.line.setTop(first.bottom());
        split.line.setHeight(paneLine);
        second.setTop(std::min(split.line.bottom(), rect.bottom()));
    }
    layout.splits.append(split);
    place(node.parts[0], first, layout);
    place(node.parts[1], second, layout);
}

QRectF half(const QRectF &rect, PaneSide side)
{
    const double width = isAcross(side) ? rect.width() / 2 : rect.width();
    const double height = isAcross(side) ? rect.height() : rect.height() / 2;
    return {side == PaneSide::Right ? rect.right() - width : rect.left(),
            side == PaneSide::Below ? rect.bottom() - height : rect.top(), width, height};
}

/** The side whose edge is nearest, if it is near. */
std::optional<PaneSide> sideAt(const QRectF &body, const QPointF &point)
{
    const double x = (point.x() - body.left()) / body.width();
    const double y = (point.y() - body.top()) / body.height();
    const std::pair<double, PaneSide> nearest = std::min({std::pair(x, PaneSide::Left),
                                                          {1 - x, PaneSide::Right},
                                                          {y, PaneSide::Above},
                                                          {1 - y, PaneSide::Below}});
    return nearest.first < edgeShare ? std::optional(nearest.second) : std::nullopt;
}

} // namespace

QRectF PaneLayout::rectOf(int pane) const
{
    const auto found = std::ranges::find(panes, pane, &Pane::id);
    return found == panes.end() ? QRectF() : found->rect;
}

PaneLayout layoutPanes(const PaneTree &tree, const QSizeF &size)
{
    PaneLayout layout;
    place(tree.root(), QRectF(QPointF(), size), layout);
    return layout;
}

int paneBeside(const PaneLayout &layout, int pane, PaneSide side)
{
    const QRectF here = layout.rectOf(pane);
    int best = 0;
    double bestGap = 0;
    double bestEdge = 0;
    for (const PaneLayout::Pane &other : layout.panes) {
        const QRectF &there = other.rect;
        const double gap = side == PaneSide::Left ? here.left() - there.right()
            : side == PaneSide::Right             ? there.left() - here.right()
            : side == PaneSide::Above             ? here.top() - there.bottom()
                                                  : there.top() - here.bottom();
        const double edge = isAcross(side)
            ? std::min(here.bottom(), there.bottom()) - std::max(here.top(), there.top())
            : std::min(here.right(), there.right()) - std::max(here.left(), there.left());
        if (other.id == pane || gap < 0 || edge <= 0) {
            continue;
        }
        if (best == 0 || gap < bestGap || (gap == bestGap && edge > bestEdge)) {
            best = other.id;
            bestGap = gap;
            bestEdge = edge;
        }
    }
    return best;
}

bool hasRoomToSplit(const QSizeF &pane, PaneSide side)
{
    return isAcross(side) ? pane.width() >= 2 * leastPane.width() + paneLine
                          : pane.height() >= 2 * leastPane.height() + paneLine;
}

PaneDrop paneDropAt(const PaneTree &tree, const PaneLayout &layout, const QUuid &session,
                    const QPointF &point, double strip)
{
    const auto under = std::ranges::find_if(
        layout.panes, [&point](const PaneLayout::Pane &pane) { return pane.rect.contains(point); });
    const PaneNode *source = tree.paneOf(session);
    if (under == layout.panes.end() || !source) {
        return {};
    }
    PaneDrop drop {.pane = under->id, .onStrip = false, .side = {}, .mark = under->rect};
    if (point.y() < under->rect.top() + strip) {
        drop.onStrip = true;
        drop.mark.setHeight(strip);
        return drop;
    }
    drop.mark.setTop(std::min(under->rect.top() + strip, under->rect.bottom()));
    const bool own = source->id == under->id;
    drop.side = sideAt(drop.mark, point);
    if (drop.side
        && (layout.panes.size() >= PaneTree::maximumPanes
            || !hasRoomToSplit(under->rect.size(), *drop.side))) {
        drop.side.reset();
    }
    if (own && (!drop.side || source->tabs.size() == 1)) {
        return {};
    }
    if (drop.side) {
        drop.mark = half(drop.mark, *drop.side);
    }
    return drop;
}

} // namespace Vesk
