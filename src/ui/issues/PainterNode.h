// A node that draws by a painter, for the software renderer, which knows no triangles.
#pragma once

#include <QRectF>
#include <QSGRenderNode>

class QPainter;
class QQuickWindow;

namespace Vesk
{

/** Hands a painter to paint(), with clip, transform and opacity of its place in the scene. */
class PainterNode : public QSGRenderNode
{
public:
    explicit PainterNode(QQuickWindow &window);

    void render(const RenderState *state) override;
    [[nodiscard]] StateFlags changedStates() const override { return {}; }
    [[nodiscard]] RenderingFlags flags() const override { return BoundedRectRendering; }
    [[nodiscard]] QRectF rect() const override { return m_bounds; }

protected:
    /** Something is to be drawn anew, within these bounds of the item. */
    void noteChanged(const QRectF &bounds);
    /** Draws what reaches into `area`, the part of the bounds that the window wants anew; never empty. */
    virtual void paint(QPainter &painter, const QRectF &area) = 0;

private:
    QQuickWindow &m_window;
    QRectF m_bounds;
};

} // namespace Vesk
