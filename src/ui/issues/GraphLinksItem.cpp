#include "ui/issues/GraphLinksItem.h"

#include "ui/issues/LinkNodes.h"

#include <QQuickWindow>
#include <QSGRendererInterface>

#include <cmath>

namespace Vesk
{

GraphLinksItem::GraphLinksItem(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void GraphLinksItem::setLayout(const IssueGraph::Layout &layout)
{
    if (m_layout == layout) {
        return;
    }
    m_layout = layout;
    m_drawing.reset();
    setSize(layout.size);
    redraw();
    Q_EMIT layoutChanged();
}

void GraphLinksItem::setChain(const QSet<QString> &chain)
{
    if (m_chain == chain) {
        return;
    }
    m_chain = chain;
    redraw();
    Q_EMIT chainChanged();
}

void GraphLinksItem::setShowsResolved(bool shows)
{
    if (m_showsResolved == shows) {
        return;
    }
    m_showsResolved = shows;
    redraw();
    Q_EMIT showsResolvedChanged();
}

void GraphLinksItem::setZoom(qreal zoom)
{
    if (m_zoom == zoom || zoom <= 0) {
        return;
    }
    m_zoom = zoom;
    if (drawnScale() != m_sceneScale) {
        update();
    }
    Q_EMIT zoomChanged();
}

void GraphLinksItem::setColor(IssueLinkCurves::Tone tone, const QColor &color)
{
    QColor &known = m_colors.at(static_cast<size_t>(tone));
    if (known == color) {
        return;
    }
    known = color;
    redraw();
    Q_EMIT colorsChanged();
}

void GraphLinksItem::redraw()
{
    m_isStale = true;
    update();
}

double GraphLinksItem::drawnScale() const
{
    const double ratio = window() ? window()->effectiveDevicePixelRatio() : 1;
    return std::exp2(std::round(std::log2(m_zoom * ratio)));
}

void GraphLinksItem::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemDevicePixelRatioHasChanged) {
        update();
    }
    QQuickItem::itemChange(change, value);
}

QSGNode *GraphLinksItem::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    const double scale = drawnScale();
    const bool isSoftware = window()->rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
    if (old && !m_isStale && (isSoftware || scale == m_sceneScale)) {
        return old;
    }
    if (m_isStale || !m_drawing) {
        // The node may still draw the one before.
        auto drawing = std::make_shared<LinkDrawing>();
        drawing->paths = m_drawing ? m_drawing->paths
                                   : std::make_shared<const std::vector<LinkPath>>(linkPaths(m_layout.links));
        const auto turns = IssueLinkCurves::drawOrder(
            m_layout.links, m_chain.isEmpty() ? std::nullopt : std::optional(m_chain), m_showsResolved);
        drawing->lines.reserve(static_cast<size_t>(turns.size()));
        for (const IssueLinkCurves::Turn &turn : turns) {
            drawing->lines.push_back(
                {.path = static_cast<size_t>(turn.link),
                 .stroke = IssueLinkCurves::stroke(m_layout.links[turn.link], turn.focused)});
        }
        m_drawing = std::move(drawing);
    }
    m_isStale = false;
    m_sceneScale = scale;
    if (m_drawing->lines.empty()) {
        delete old;
        return nullptr;
    }
    if (isSoftware) {
        const QRectF bounds = boundsOf(*m_drawing->paths);
        auto *node = old ? static_cast<LinkPainterNode *>(old) : new LinkPainterNode(*window(), bounds);
        node->setDrawing(m_drawing, m_colors, bounds);
        return node;
    }
    auto *node = old ? static_cast<LinkMeshNode *>(old) : new LinkMeshNode;
    node->setDrawing(*m_drawing, LinkInk(m_colors, 1 / scale), *window());
    return node;
}

} // namespace Vesk
