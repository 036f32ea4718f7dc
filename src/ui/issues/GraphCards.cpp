#include "ui/issues/GraphCards.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

namespace Vesk
{

using namespace Qt::StringLiterals;
using IssueGraph::Placement;

namespace
{

constexpr double stepAcross = IssueGraph::Measures::columnPitch;
constexpr double stepDown = 2 * IssueGraph::Measures::cardPitch;

const Placement *placed(const IssueGraph::Layout &layout, const QString &key)
{
    const auto it = std::ranges::find(layout.placements, key, [](const auto &card) { return card.node.key; });
    return it == layout.placements.end() ? nullptr : &*it;
}

/** Of those that are wanted, the one whose middle is nearest in height; then the upper one. */
const Placement *nearest(const IssueGraph::Layout &layout, const Placement &from,
                         const std::function<bool(const Placement &card)> &wanted)
{
    const Placement *best = nullptr;
    const auto distance = [&from](const Placement &card) {
        return std::abs(card.frame.center().y() - from.frame.center().y());
    };
    for (const Placement &card : layout.placements) {
        if (wanted(card) && (!best || distance(card) < distance(*best))) {
            best = &card;
        }
    }
    return best;
}

QString alongLink(const IssueGraph::Layout &layout, const Placement &from, bool right)
{
    QSet<QString> ends;
    for (const IssueGraph::Link &link : layout.links) {
        if ((right ? link.from : link.to) == from.node.key) {
            ends.insert(right ? link.to : link.from);
        }
    }
    // A link that leads back is followed only where none leads on.
    const auto *card = nearest(layout, from, [&](const Placement &other) {
        return ends.contains(other.node.key)
            && (right ? other.column > from.column : other.column < from.column);
    });
    if (!card) {
        card = nearest(layout, from, [&](const Placement &other) { return ends.contains(other.node.key); });
    }
    if (!card) {
        const int column = from.column + (right ? 1 : -1);
        card = nearest(layout, from, [&](const Placement &other) { return other.column == column; });
    }
    return card ? card->node.key : from.node.key;
}

} // namespace

GraphCards::Note GraphCards::note(const IssueGraph::Node &node)
{
    if (node.readiness == IssueGraph::Readiness::Settled) {
        return {node.milestone, Tone::Plain};
    }
    const bool isBlocked = node.status.kind == IssueStatus::Kind::Blocked;
    if (!node.unresolved.isEmpty()) {
        return {u"선행 %1 남음"_s.arg(node.unresolved.size()), isBlocked ? Tone::Blocked : Tone::Waiting};
    }
    const bool isBegun =
        node.status.kind == IssueStatus::Kind::Doing || node.status.kind == IssueStatus::Kind::Review;
    if (!isBegun && !isBlocked) {
        return {u"지금 가능"_s, Tone::Ready};
    }
    return node.blocking > 0
        ? Note {u"막는 것 %1 · 아래로 %2"_s.arg(node.blocking).arg(node.downstream), Tone::Plain}
        : Note {node.milestone, Tone::Plain};
}

QString GraphCards::neighbour(const IssueGraph::Layout &layout, const QString &key, Direction direction)
{
    const Placement *from = placed(layout, key);
    if (!from) {
        return layout.placements.isEmpty() ? key : layout.placements.first().node.key;
    }
    if (direction == Direction::Left || direction == Direction::Right) {
        return alongLink(layout, *from, direction == Direction::Right);
    }
    const int row = from->row + (direction == Direction::Down ? 1 : -1);
    const auto *card = nearest(layout, *from, [&](const Placement &other) {
        return other.column == from->column && other.row == row;
    });
    return card ? card->node.key : key;
}

QRectF GraphCards::heldWindow(const QRectF &sight)
{
    if (sight.isEmpty()) {
        return {};
    }
    const auto floorTo = [](double at, double step) { return std::floor(at / step) * step; };
    const auto ceilTo = [](double at, double step) { return std::ceil(at / step) * step; };
    return {QPointF(floorTo(sight.left(), stepAcross), floorTo(sight.top(), stepDown)),
            QPointF(ceilTo(sight.right(), stepAcross), ceilTo(sight.bottom(), stepDown))};
}

} // namespace Vesk
