// The cards of a dependency graph that are too small, or not ready yet, to be shown in full.
#pragma once

#include "ui/issues/CardSketchNodes.h"

#include <QQuickItem>
#include <QRectF>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace Vesk
{

/**
 * Draws sketches in the layout's own coordinates, all at one go: thousands of them are as quick to move as
 * one. `zoom` says how large the scale around the item is, for lines are as wide as pixels at every zoom.
 */
class GraphCardsItem : public QQuickItem
{
    Q_OBJECT
    QML_NAMED_ELEMENT(GraphCardSketches)
    Q_PROPERTY(qreal zoom READ zoom WRITE setZoom NOTIFY zoomChanged FINAL)

public:
    explicit GraphCardsItem(QQuickItem *parent = nullptr);

    void setCards(std::vector<CardSketch> cards);
    [[nodiscard]] const std::vector<CardSketch> &cards() const { return *m_cards; }
    [[nodiscard]] qreal zoom() const { return m_zoom; }
    void setZoom(qreal zoom);

Q_SIGNALS:
    void zoomChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    CardSketches m_cards;
    QRectF m_bounds; // of all
    qreal m_zoom = 1;
};

} // namespace Vesk
