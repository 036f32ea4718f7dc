#include "ui/issues/GraphStage.h"

#include <cmath>

namespace Vesk
{

namespace
{

constexpr double notch = 120;       // eighths of a degree
constexpr double notchZoom = 1.2;   // the step of the keys
constexpr double notchPixels = 60;  // three lines
constexpr double revealMargin = 24; // the layout's own margin

/** How far [low, high] is to move to lie within [0, length]; its beginning counts where both do not fit. */
double wayInto(double low, double high, double length)
{
    if (low < 0 || high - low > length) {
        return -low;
    }
    return high > length ? length - high : 0;
}

} // namespace

void GraphStage::setSize(QSizeF size)
{
    if (m_size == size) {
        return;
    }
    m_size = size;
    m_viewport = m_viewport.clamped(m_content, m_size);
    fitNew();
    Q_EMIT changed();
}

void GraphStage::setUnit(qreal unit)
{
    if (m_unit == unit || unit <= 0) {
        return;
    }
    m_unit = unit;
    m_content = m_layout * m_unit;
    fitNew();
    Q_EMIT changed();
}

void GraphStage::show(const QString &milestone, QSizeF layout)
{
    m_milestone = milestone;
    m_layout = layout;
    m_content = layout * m_unit;
    fitNew();
    Q_EMIT changed();
}

void GraphStage::fitNew()
{
    const QString identity = IssueGraphAutoFit::graphIdentity(m_milestone, m_content);
    if (const auto place = m_autoFit.fit(identity, m_content, m_size)) {
        m_viewport = *place;
        Q_EMIT fitted();
    }
}

void GraphStage::set(const IssueGraphViewport &viewport)
{
    if (m_viewport != viewport) {
        m_viewport = viewport;
        Q_EMIT changed();
    }
}

void GraphStage::zoomIn()
{
    set(m_viewport.zoomedIn(m_content, m_size));
}

void GraphStage::zoomOut()
{
    set(m_viewport.zoomedOut(m_content, m_size));
}

void GraphStage::fit()
{
    set(IssueGraphViewport::fitted(m_content, m_size));
}

void GraphStage::zoomBy(qreal factor, QPointF anchor)
{
    set(m_viewport.zoomed(m_viewport.zoom * factor, anchor, m_content, m_size));
}

void GraphStage::wheel(QPointF turn, QPointF anchor, bool zooms, bool sideways)
{
    if (zooms) {
        zoomBy(std::pow(notchZoom, turn.y() / notch), anchor);
        return;
    }
    IssueGraphViewport moved = m_viewport;
    moved.pan += (sideways ? turn.transposed() : turn) * (notchPixels / notch);
    set(moved.clamped(m_content, m_size));
}

void GraphStage::drag(QPointF translation)
{
    if (const auto moved = m_drag.move(m_viewport, translation, m_content, m_size)) {
        set(*moved);
    }
}

bool GraphStage::endDrag()
{
    const bool selects = m_drag.selects();
    m_drag.end();
    m_drag.forget();
    return selects;
}

void GraphStage::reveal(const QRectF &frame)
{
    if (m_size.isEmpty()) {
        return; // the card in focus is revealed when the picture is fitted
    }
    const double scale = this->scale();
    const QRectF seen(frame.topLeft() * scale + m_viewport.pan, frame.size() * scale);
    const QRectF wide = seen.adjusted(-revealMargin, -revealMargin, revealMargin, revealMargin);
    IssueGraphViewport moved = m_viewport;
    moved.pan += {wayInto(wide.left(), wide.right(), m_size.width()),
                  wayInto(wide.top(), wide.bottom(), m_size.height())};
    set(moved.clamped(m_content, m_size));
}

QRectF GraphStage::sight() const
{
    return m_size.isEmpty() ? QRectF() : QRectF(inLayout({0, 0}), m_size / scale());
}

QPointF GraphStage::inLayout(QPointF point) const
{
    return (point - m_viewport.pan) / scale();
}

} // namespace Vesk
