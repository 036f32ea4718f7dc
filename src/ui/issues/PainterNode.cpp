#include "ui/issues/PainterNode.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGRendererInterface>

namespace Vesk
{

PainterNode::PainterNode(QQuickWindow &window)
    : m_window(window)
{
}

void PainterNode::noteChanged(const QRectF &bounds)
{
    m_bounds = bounds;
    markDirty(DirtyMaterial);
}

void PainterNode::render(const RenderState *state)
{
    auto *const painter = static_cast<QPainter *>(
        m_window.rendererInterface()->getResource(&m_window, QSGRendererInterface::PainterResource));
    if (!painter) {
        return;
    }
    painter->save();
    const QRegion *const clip = state->clipRegion();
    if (clip && !clip->isEmpty()) {
        painter->setClipRegion(*clip, Qt::ReplaceClip); // in pixels of the window, so before the transform
    }
    painter->setTransform(matrix()->toTransform());
    painter->setOpacity(inheritedOpacity());
    if (const QRectF area = painter->clipBoundingRect().intersected(m_bounds); !area.isEmpty()) {
        paint(*painter, area);
    }
    painter->restore();
}

} // namespace Vesk
