// How a layout is written down. {"focused": n, "root": node}; a node is {"split": "right" or "down", "ratio":
// 0.5, "parts": [node, node]} or {"places": [place, ...], "shown": conversation}; a place is {"id":
// conversation, "project": alias, "title": text}; n counts the panes from 0 in reading order.
#include "ui/shell/PaneTree.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype longestText = 2 * 1024 * 1024;
constexpr qsizetype mostPlaces = 64;
constexpr qsizetype longestPlace = 128;

constexpr auto splitKey = "split"_L1;
constexpr auto ratioKey = "ratio"_L1;
constexpr auto partsKey = "parts"_L1;
constexpr auto placesKey = "places"_L1;
constexpr auto shownKey = "shown"_L1;
constexpr auto idKey = "id"_L1;
constexpr auto projectKey = "project"_L1;
constexpr auto titleKey = "title"_L1;
constexpr auto focusedKey = "focused"_L1;
constexpr auto rootKey = "root"_L1;

bool isWritable(const PanePlace &place)
{
    return !place.conversation.isEmpty() && place.conversation.size() <= longestPlace
        && !place.project.isEmpty() && place.project.size() <= longestPlace;
}

QJsonArray placesJson(const QList<PanePlace> &places)
{
    QJsonArray array;
    QStringList known;
    for (const PanePlace &place : places) {
        if (!isWritable(place) || known.contains(place.conversation) || array.size() == mostPlaces) {
            continue;
        }
        known.append(place.conversation);
        array.append(QJsonObject {{idKey, place.conversation},
                                  {projectKey, place.project},
                                  {titleKey, place.title.left(longestPlace)}});
    }
    return array;
}

QJsonObject paneJson(const PaneNode &node, const std::function<PanePlace(const QUuid &)> &placeOf)
{
    if (!node.isPane()) {
        QJsonArray parts;
        for (const PaneNode &part : node.parts) {
            parts.append(paneJson(part, placeOf));
        }
        return {{splitKey, node.direction == Qt::Horizontal ? u"right"_s : u"down"_s},
                {ratioKey, node.ratio},
                {partsKey, parts}};
    }
    QList<PanePlace> places;
    for (const QUuid &session : node.tabs) {
        places.append(placeOf(session));
    }
    places.append(node.places); // who has not come back yet
    const QString shown =
        node.places.isEmpty() && !node.shown.isNull() ? placeOf(node.shown).conversation : node.shownPlace;
    return {{placesKey, placesJson(places)}, {shownKey, shown.left(longestPlace)}};
}

/** What is still allowed while a layout is read. */
struct PaneBudget {
    int panes = PaneTree::maximumPanes;
    int lastId = 0;
};

bool readPane(const QJsonObject &json, PaneNode &node, PaneBudget &budget)
{
    node.id = ++budget.lastId;
    if (!json.contains(splitKey)) {
        if (!json.value(placesKey).isArray() || --budget.panes < 0) {
            return false;
        }
        node.kept = true;
        for (const QJsonValue &each : json.value(placesKey).toArray()) {
            const PanePlace place {each[idKey].toString(), each[projectKey].toString(),
                                   each[titleKey].toString().left(longestPlace)};
            if (isWritable(place) && node.places.size() < mostPlaces) {
                node.places.append(place);
            }
        }
        node.shownPlace = json.value(shownKey).toString();
        return true;
    }
    const QString way = json.value(splitKey).toString();
    const QJsonArray parts = json.value(partsKey).toArray();
    node.direction = way == "down"_L1 ? Qt::Vertical : Qt::Horizontal;
    node.ratio = json.value(ratioKey).toDouble(-1);
    const bool inRange = node.ratio >= PaneTree::leastRatio && node.ratio <= PaneTree::greatestRatio;
    if ((way != "right"_L1 && way != "down"_L1) || parts.size() != 2 || !inRange) {
        return false;
    }
    node.parts.resize(2);
    // As deep as it may become: every level takes a pane of its own before it goes on.
    if (budget.lastId > 2 * PaneTree::maximumPanes) {
        return false;
    }
    return readPane(parts.at(0).toObject(), node.parts[0], budget)
        && readPane(parts.at(1).toObject(), node.parts[1], budget);
}

} // namespace

QByteArray PaneTree::toJson(const std::function<PanePlace(const QUuid &)> &placeOf) const
{
    const QJsonObject root = paneJson(m_root, placeOf);
    if (root.value(placesKey).isArray() && root.value(placesKey).toArray().isEmpty()) {
        return {};
    }
    const auto inOrder = panes();
    const auto focused = std::ranges::find(inOrder, m_focused, &PaneNode::id) - inOrder.begin();
    return QJsonDocument(QJsonObject {{focusedKey, static_cast<int>(focused)}, {rootKey, root}})
        .toJson(QJsonDocument::Compact);
}

PaneTree PaneTree::fromJson(const QByteArray &json)
{
    if (json.isEmpty() || json.size() > longestText) {
        return {};
    }
    const QJsonObject layout = QJsonDocument::fromJson(json).object();
    PaneTree tree;
    PaneBudget budget;
    if (!readPane(layout.value(rootKey).toObject(), tree.m_root, budget)
        || (tree.m_root.isPane() && tree.m_root.places.isEmpty())) {
        return {};
    }
    tree.m_lastId = budget.lastId;
    const auto inOrder = tree.panes();
    const int focused = layout.value(focusedKey).toInt();
    tree.m_focused = inOrder.at(focused >= 0 && focused < inOrder.size() ? focused : 0)->id;
    return tree;
}

} // namespace Vesk
