#include "ui/version/DashedEdge.h"

#include <QPainter>

namespace Vesk
{

DashedEdge::DashedEdge(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(this, &DashedEdge::changed, this, [this] { update(); });
}

void DashedEdge::paint(QPainter *painter)
{
    painter->setRenderHint(QPainter::Antialiasing);
    QPen pen(m_edge, 1);
    if (m_dashed)
        pen.setDashPattern({3, 2});
    painter->setPen(pen);
    painter->setBrush(m_fill);
    painter->drawRoundedRect(QRectF(0.5, 0.5, width() - 1, height() - 1), m_radius, m_radius);
}

} // namespace Vesk
