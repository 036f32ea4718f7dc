#include "ui/shell/PaneTree.h"

#include <algorithm>
#include <cmath>

namespace Vesk
{

namespace
{

template <typename Node, typename Wanted>
Node *findNode(Node &node, const Wanted &wanted)
{
    if (wanted(node)) {
        return &node;
    }
    for (auto &part : node.parts) {
        if (Node *found = findNode<Node>(part, wanted)) {
            return found;
        }
    }
    return nullptr;
}

void collectPanes(const PaneNode &node, QList<const PaneNode *> &panes)
{
    if (node.isPane()) {
        panes.append(&node);
    }
    for (const PaneNode &part : node.parts) {
        collectPanes(part, panes);
    }
}

bool hasPlaceFor(const PaneNode &node, const QString &conversation)
{
    return std::ranges::find(node.places, conversation, &PanePlace::conversation) != node.places.end();
}

bool dropPlaces(PaneNode &node)
{
    bool any = !node.places.isEmpty();
    node.places.clear();
    node.shownPlace.clear();
    for (PaneNode &part : node.parts) {
        any = dropPlaces(part) || any;
    }
    return any;
}

/** The pane of this part that lies at its end, or its beginning, in a direction. */
const PaneNode &paneAtEdge(const PaneNode &node, Qt::Orientation direction, bool atEnd)
{
    if (node.isPane()) {
        return node;
    }
    return paneAtEdge(node.parts[atEnd && node.direction == direction ? 1 : 0], direction, atEnd);
}

/** How many panes lie behind each other in a direction. */
int lengthOf(const PaneNode &node, Qt::Orientation direction)
{
    if (node.isPane() || node.direction != direction) {
        return 1;
    }
    return lengthOf(node.parts[0], direction) + lengthOf(node.parts[1], direction);
}

bool makeEven(PaneNode &node, Qt::Orientation direction)
{
    if (node.isPane() || node.direction != direction) {
        return false;
    }
    const double ratio = static_cast<double>(lengthOf(node.parts[0], direction)) / lengthOf(node, direction);
    bool changed = std::exchange(node.ratio, ratio) != ratio;
    for (PaneNode &part : node.parts) {
        changed = makeEven(part, direction) || changed;
    }
    return changed;
}

} // namespace

PaneTree::PaneTree()
{
    m_root.id = 1;
}

const PaneNode &PaneTree::focused() const
{
    return *node(m_focused);
}

const PaneNode *PaneTree::node(int id) const
{
    return findNode(m_root, [id](const PaneNode &node) { return node.id == id; });
}

PaneNode *PaneTree::held(int id)
{
    return findNode(m_root, [id](const PaneNode &node) { return node.id == id; });
}

const PaneNode *PaneTree::paneOf(const QUuid &session) const
{
    return findNode(m_root, [&session](const PaneNode &node) { return node.tabs.contains(session); });
}

QList<const PaneNode *> PaneTree::panes() const
{
    QList<const PaneNode *> panes;
    collectPanes(m_root, panes);
    return panes;
}

bool PaneTree::add(const QUuid &session, const QString &conversation)
{
    if (session.isNull() || paneOf(session)) {
        return false;
    }
    PaneNode *pane = conversation.isEmpty()
        ? nullptr
        : findNode(m_root, [&](const PaneNode &node) { return hasPlaceFor(node, conversation); });
    if (pane) {
        pane->places.removeIf([&](const PanePlace &place) { return place.conversation == conversation; });
    } else {
        pane = held(m_focused);
    }
    pane->tabs.append(session);
    pane->kept = false;
    if (pane->shown.isNull() || (!conversation.isEmpty() && pane->shownPlace == conversation)) {
        pane->shown = session;
    }
    return true;
}

bool PaneTree::remove(const QUuid &session)
{
    const PaneNode *found = paneOf(session);
    if (!found) {
        return false;
    }
    PaneNode &pane = *held(found->id);
    detach(pane, session);
    if (pane.tabs.isEmpty()) {
        closeNode(pane.id);
    }
    return true;
}

bool PaneTree::show(const QUuid &session)
{
    const PaneNode *found = paneOf(session);
    if (!found || (found->shown == session && found->id == m_focused)) {
        return false;
    }
    held(found->id)->shown = session;
    m_focused = found->id;
    return true;
}

bool PaneTree::focus(int pane)
{
    const PaneNode *found = node(pane);
    if (!found || !found->isPane() || pane == m_focused) {
        return false;
    }
    m_focused = pane;
    return true;
}

bool PaneTree::forgetPlaces()
{
    return dropPlaces(m_root);
}

bool PaneTree::move(const QUuid &session, int pane, int position)
{
    const PaneNode *source = paneOf(session);
    const PaneNode *found = node(pane);
    if (!source || !found || !found->isPane()) {
        return false;
    }
    const int from = source->id;
    PaneNode &target = *held(pane);
    qsizetype place = position < 0 ? target.tabs.size() : std::min<qsizetype>(position, target.tabs.size());
    if (from == pane) {
        const qsizetype now = target.tabs.indexOf(session);
        place -= place > now ? 1 : 0;
        if (place == now) {
            return show(session);
        }
        target.tabs.move(now, place);
    } else {
        detach(*held(from), session);
        target.tabs.insert(place, session);
    }
    target.shown = session;
    target.kept = false;
    m_focused = pane;
    if (held(from)->tabs.isEmpty()) {
        closeNode(from);
    }
    return true;
}

bool PaneTree::split(int pane, PaneSide side, const QUuid &session)
{
    const PaneNode *source = paneOf(session);
    const PaneNode *found = node(pane);
    if (!source || !found || !found->isPane() || panes().size() >= maximumPanes
        || (source == found && source->tabs.size() == 1)) {
        return false;
    }
    const int from = source->id;
    detach(*held(from), session);

    PaneNode fresh;
    fresh.id = ++m_lastId;
    fresh.tabs = {session};
    fresh.shown = session;
    m_focused = fresh.id;

    PaneNode &place = *held(pane);
    PaneNode there = std::move(place);
    place = PaneNode();
    place.id = ++m_lastId;
    place.direction = side == PaneSide::Left || side == PaneSide::Right ? Qt::Horizontal : Qt::Vertical;
    const bool before = side == PaneSide::Left || side == PaneSide::Above;
    place.parts.push_back(before ? std::move(fresh) : std::move(there));
    place.parts.push_back(before ? std::move(there) : std::move(fresh));

    if (held(from)->tabs.isEmpty()) {
        closeNode(from);
    }
    return true;
}

bool PaneTree::close(int pane)
{
    const PaneNode *found = node(pane);
    if (!found || !found->isPane() || !found->tabs.isEmpty() || found == &m_root) {
        return false;
    }
    closeNode(pane);
    return true;
}

bool PaneTree::resize(int split, double ratio)
{
    PaneNode *found = held(split);
    if (!found || found->isPane() || !std::isfinite(ratio)) {
        return false;
    }
    const double bounded = std::clamp(ratio, leastRatio, greatestRatio);
    return std::exchange(found->ratio, bounded) != bounded;
}

bool PaneTree::even(int split)
{
    PaneNode *found = held(split);
    return found && makeEven(*found, found->direction);
}

void PaneTree::detach(PaneNode &pane, const QUuid &session)
{
    const qsizetype index = pane.tabs.indexOf(session);
    pane.tabs.remove(index);
    if (pane.shown == session) {
        // The neighbour that moved into the place, else the one before it.
        pane.shown = pane.tabs.value(std::min(index, pane.tabs.size() - 1));
    }
}

void PaneTree::closeNode(int pane)
{
    PaneNode *parent = findNode(m_root, [pane](const PaneNode &node) {
        return std::ranges::find(node.parts, pane, &PaneNode::id) != node.parts.end();
    });
    if (!parent) {
        m_root.kept = false;
        return;
    }
    const bool first = parent->parts[0].id == pane;
    PaneNode other = std::move(parent->parts[first ? 1 : 0]);
    if (m_focused == pane) {
        m_focused = paneAtEdge(other, parent->direction, !first).id;
    }
    *parent = std::move(other);
}

} // namespace Vesk
