#include "ui/issues/GraphCardsItem.h"

#include "ui/controls/Theme.h"

#include <QQuickWindow>
#include <QSGRendererInterface>

#include <algorithm>

namespace Vesk
{
namespace
{

SketchColors themeSketchColors()
{
    const ThemeColors &theme = Theme::shared().colors();
    SketchColors colors {.paper = theme.canvas,
                         .ground = theme.raised,
                         .settledGround = theme.panel,
                         .hoveredGround = theme.hover,
                         .edge = theme.line2,
                         .focusedEdge = theme.accent,
                         .text = theme.text,
                         .settledText = theme.text3,
                         .tones = {theme.text3, theme.success, theme.warning, theme.danger},
                         .statuses = {}};
    std::ranges::copy_n(theme.statuses.begin(), colors.statuses.size(), colors.statuses.begin());
    return colors;
}

} // namespace

GraphCardsItem::GraphCardsItem(QQuickItem *parent)
    : QQuickItem(parent)
    , m_cards(std::make_shared<const std::vector<CardSketch>>())
{
    setFlag(ItemHasContents);
    connect(&Theme::shared(), &Theme::colorsChanged, this, &QQuickItem::update);
}

void GraphCardsItem::setCards(std::vector<CardSketch> cards)
{
    if (*m_cards == cards) {
        return;
    }
    m_bounds = {};
    for (const CardSketch &card : cards) {
        m_bounds |= card.frame;
    }
    m_cards = std::make_shared<const std::vector<CardSketch>>(std::move(cards));
    update();
}

void GraphCardsItem::setZoom(qreal zoom)
{
    if (m_zoom == zoom || zoom <= 0) {
        return;
    }
    m_zoom = zoom;
    update();
    Q_EMIT zoomChanged();
}

void GraphCardsItem::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemDevicePixelRatioHasChanged) {
        update();
    }
    QQuickItem::itemChange(change, value);
}

QSGNode *GraphCardsItem::updatePaintNode(QSGNode *old, UpdatePaintNodeData * /*data*/)
{
    if (m_cards->empty()) {
        delete old;
        return nullptr;
    }
    const SketchColors colors = themeSketchColors();
    if (window()->rendererInterface()->graphicsApi() == QSGRendererInterface::Software) {
        auto *node = old ? static_cast<CardSketchPainterNode *>(old) : new CardSketchPainterNode(*window());
        node->setCards(m_cards, colors, m_bounds);
        return node;
    }
    auto *node = old ? static_cast<CardSketchMeshNode *>(old) : new CardSketchMeshNode;
    node->setCards(*m_cards, colors, 1 / (m_zoom * window()->effectiveDevicePixelRatio()), *window());
    return node;
}

} // namespace Vesk
