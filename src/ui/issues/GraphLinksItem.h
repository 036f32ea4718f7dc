// The links of a dependency graph, behind its cards.
#pragma once

#include "ui/issues/LinkInk.h"
#include "ui/issues/LinkPaths.h"

#include <QColor>
#include <QQuickItem>
#include <QRectF>
#include <QSet>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace Vesk
{

/**
 * Draws a layout's links in the layout's own coordinates: pan and zoom are the place and scale of the item or
 * of one around it, and cost no drawing. `zoom` says how large that scale is, so that edges are soft by about
 * one pixel, and `visibleArea` what is in view: of a large graph only that and some around it is made ready.
 */
class GraphLinksItem : public QQuickItem
{
    Q_OBJECT
    QML_NAMED_ELEMENT(GraphLinks)
    Q_PROPERTY(Vesk::IssueGraph::Layout layout READ layout WRITE setLayout NOTIFY layoutChanged FINAL)
    /** The keys of the issues in focus; with none of them all links are. */
    Q_PROPERTY(QSet<QString> chain READ chain WRITE setChain NOTIFY chainChanged FINAL)
    Q_PROPERTY(bool showsResolved READ showsResolved WRITE setShowsResolved NOTIFY showsResolvedChanged FINAL)
    Q_PROPERTY(qreal zoom READ zoom WRITE setZoom NOTIFY zoomChanged FINAL)
    /** In the layout's coordinates; an empty one is all. */
    Q_PROPERTY(QRectF visibleArea READ visibleArea WRITE setVisibleArea NOTIFY visibleAreaChanged FINAL)
    Q_PROPERTY(QColor backwardColor READ backwardColor WRITE setBackwardColor NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor openColor READ openColor WRITE setOpenColor NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor resolvedColor READ resolvedColor WRITE setResolvedColor NOTIFY colorsChanged FINAL)

public:
    explicit GraphLinksItem(QQuickItem *parent = nullptr);

    [[nodiscard]] IssueGraph::Layout layout() const { return m_layout; }
    void setLayout(const IssueGraph::Layout &layout);
    [[nodiscard]] QSet<QString> chain() const { return m_chain; }
    void setChain(const QSet<QString> &chain);
    [[nodiscard]] bool showsResolved() const { return m_showsResolved; }
    void setShowsResolved(bool shows);
    [[nodiscard]] qreal zoom() const { return m_zoom; }
    void setZoom(qreal zoom);
    [[nodiscard]] QRectF visibleArea() const { return m_visibleArea; }
    void setVisibleArea(const QRectF &area);
    [[nodiscard]] QColor backwardColor() const { return color(IssueLinkCurves::Tone::Backward); }
    void setBackwardColor(const QColor &color) { setColor(IssueLinkCurves::Tone::Backward, color); }
    [[nodiscard]] QColor openColor() const { return color(IssueLinkCurves::Tone::Open); }
    void setOpenColor(const QColor &color) { setColor(IssueLinkCurves::Tone::Open, color); }
    [[nodiscard]] QColor resolvedColor() const { return color(IssueLinkCurves::Tone::Resolved); }
    void setResolvedColor(const QColor &color) { setColor(IssueLinkCurves::Tone::Resolved, color); }

Q_SIGNALS:
    void layoutChanged();
    void chainChanged();
    void showsResolvedChanged();
    void zoomChanged();
    void visibleAreaChanged();
    void colorsChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    [[nodiscard]] const QColor &color(IssueLinkCurves::Tone tone) const
    {
        return m_colors.at(static_cast<size_t>(tone));
    }
    void setColor(IssueLinkCurves::Tone tone, const QColor &color);
    void redraw();
    [[nodiscard]] bool sceneServes() const;
    void prepareDrawing();
    /** The scale for which lines are drawn; a power of two, so that zooming rarely draws them anew. */
    [[nodiscard]] double drawnScale() const;

    IssueGraph::Layout m_layout;
    QSet<QString> m_chain;
    bool m_showsResolved = true;
    qreal m_zoom = 1;
    QRectF m_visibleArea;
    LinkColors m_colors {Qt::red, Qt::black, Qt::gray};
    std::shared_ptr<LinkDrawing> m_drawing;
    QRectF m_bounds;         // of the drawing
    bool m_isStale = true;   // the scene shows another drawing
    double m_sceneScale = 0; // for which the scene was drawn
    QRectF m_sceneArea;      // of which the scene has triangles
};

} // namespace Vesk
