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
    if (!sceneServes()) {
        update();
    }
    Q_EMIT zoomChanged();
}

void GraphLinksItem::setVisibleArea(const QRectF &area)
{
    if (m_visibleArea == area) {
        return;
    }
    m_visibleArea = area;
    if (!sceneServes()) {
        update();
    }
    Q_EMIT visibleAreaChanged();
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

bool GraphLinksItem::sceneServes() const
{
    const QRectF needed = m_visibleArea.isEmpty() ? m_bounds : m_visibleArea.intersected(m_bounds);
    return drawnScale() == m_sceneScale && (needed.isEmpty() || m_sceneArea.contains(needed));
}

void GraphLinksItem::prepareDrawing()
{
    auto drawing = std::make_shared<LinkDrawing>(); // a node may still draw the one before
    if (m_drawing) {
        drawing->paths = m_drawing->paths;
    } else {
        drawing->paths = std::make_shared<const std::vector<LinkPath>>(linkPaths(m_layout.links));
        m_bounds = boundsOf(*drawing->paths);
    }
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

QSGNode *GraphLinksItem::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    const bool isSoftware = window()->rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
    if (old && !m_isStale && (isSoftware || sceneServes())) {
        return old;
    }
    if (m_isStale) {
        prepareDrawing();
        m_isStale = false;
    }
    m_sceneScale = drawnScale();
    if (m_drawing->lines.empty()) {
        delete old;
        return nullptr;
    }
    if (isSoftware) {
        m_sceneArea = m_bounds;
        auto *node = old ? static_cast<LinkPainterNode *>(old) : new LinkPainterNode(*window());
        node->setDrawing(m_drawing, m_colors, m_bounds);
        return node;
    }
    // With half a view more on each side: a short pan makes nothing anew.
    const double wider = m_visibleArea.width() / 2;
    const double higher = m_visibleArea.height() / 2;
    m_sceneArea = m_visibleArea.isEmpty()
        ? m_bounds
        : m_visibleArea.adjusted(-wider, -higher, wider, higher).intersected(m_bounds);
    auto *node = old ? static_cast<LinkMeshNode *>(old) : new LinkMeshNode;
    node->setDrawing(*m_drawing, LinkInk(m_colors, 1 / m_sceneScale), m_sceneArea, *window());
    return node;
}

} // namespace Vesk
