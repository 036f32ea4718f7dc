#include "issues/IssueLinkCurves.h"

#include <algorithm>
#include <cmath>

namespace Vesk::IssueLinkCurves
{

QList<Cubic> cubics(const IssueGraph::Link &link)
{
    constexpr double forwardReach = 0.45;
    constexpr double leastForwardReach = 18;
    constexpr double backwardReach = 0.4;
    constexpr double leastBackwardReach = 40;

    QList<Cubic> pieces;
    if (link.points.size() < 2) {
        return pieces;
    }
    if (link.backward) {
        const QPointF start = link.points.first();
        const QPointF end = link.points.last();
        const QPointF bulge(std::max(std::abs(end.y() - start.y()) * backwardReach, leastBackwardReach), 0);
        return {{.start = start, .control1 = start + bulge, .control2 = end + bulge, .end = end}};
    }
    for (qsizetype at = 1; at < link.points.size(); ++at) {
        const QPointF start = link.points[at - 1];
        const QPointF end = link.points[at];
        const QPointF reach(std::max((end.x() - start.x()) * forwardReach, leastForwardReach), 0);
        pieces.append({.start = start, .control1 = start + reach, .control2 = end - reach, .end = end});
    }
    return pieces;
}

Tone tone(const IssueGraph::Link &link)
{
    if (link.backward) {
        return Tone::Backward;
    }
    return link.resolved ? Tone::Resolved : Tone::Open;
}

Stroke stroke(const IssueGraph::Link &link, bool focused)
{
    if (!focused) {
        return {.width = 1, .opacity = link.resolved ? 0.07 : 0.1, .dashed = link.resolved};
    }
    return link.resolved ? Stroke {.width = 1, .opacity = 0.4, .dashed = true}
                         : Stroke {.width = 1.6, .opacity = 0.75};
}

std::array<QPointF, 3> arrowHead(const IssueGraph::Link &link)
{
    constexpr double length = 5;
    constexpr double halfBase = 3.5;
    const QPointF tip = link.points.isEmpty() ? QPointF() : link.points.last();
    const double base = tip.x() + (link.backward ? length : -length);
    return {tip, QPointF(base, tip.y() - halfBase), QPointF(base, tip.y() + halfBase)};
}

QList<Turn> drawOrder(const QList<IssueGraph::Link> &links, const std::optional<QSet<QString>> &chain,
                      bool showsResolved)
{
    QList<Turn> turns;
    turns.reserve(links.size());
    for (qsizetype at = 0; at < links.size(); ++at) {
        const IssueGraph::Link &link = links[at];
        if (showsResolved || !link.resolved) {
            const bool focused = !chain || (chain->contains(link.from) && chain->contains(link.to));
            turns.append({.link = at, .focused = focused});
        }
    }
    std::stable_partition(turns.begin(), turns.end(), [](const Turn &turn) { return !turn.focused; });
    return turns;
}

} // namespace Vesk::IssueLinkCurves
