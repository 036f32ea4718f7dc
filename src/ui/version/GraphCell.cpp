#include "ui/version/GraphCell.h"

#include "ui/controls/Theme.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace Vesk
{

namespace
{

// Before the text size is applied.
constexpr qreal laneStep = 16;
constexpr qreal firstLane = 12;
constexpr qreal stroke = 1.8;
constexpr qreal nodeSize = 8;
constexpr qreal ringSize = 9;
constexpr qreal bend = 7;

struct Measures {
    qreal scale;
    qreal height;

    [[nodiscard]] qreal x(int lane) const { return (firstLane + laneStep * lane) * scale; }
    [[nodiscard]] qreal middle() const { return std::floor(height / 2) + 0.5; }
};

/** From the edge of the row at `lane` to the node, or the other way round: the same line. */
QPainterPath pathTo(const Measures &at, int node, int lane, qreal edge)
{
    const qreal x = at.x(lane);
    const qreal middle = at.middle();
    QPainterPath path({x, edge});
    if (lane == node) {
        path.lineTo(x, middle);
        return path;
    }
    const qreal radius = bend * at.scale;
    const qreal towards = lane < node ? radius : -radius;
    path.lineTo(x, edge < middle ? middle - radius : middle + radius);
    path.quadTo(x, middle, x + towards, middle);
    path.lineTo(at.x(node), middle);
    return path;
}

QPen penOf(const GraphLine &line, qreal scale)
{
    QPen pen(Theme::shared().lane(line.lane), stroke * scale, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
    if (line.isDashed)
        pen.setDashPattern({2, 1.6});
    return pen;
}

void drawNode(QPainter &painter, const Measures &at, const GraphPicture &picture, const QColor &ground)
{
    const QColor color = Theme::shared().lane(picture.lane);
    const QPointF centre(at.x(picture.lane), at.middle());
    const auto circle = [&](qreal size) {
        painter.drawEllipse(centre, size / 2 * at.scale, size / 2 * at.scale);
    };
    if (picture.node == GraphPicture::Node::Commit) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        circle(nodeSize);
        return;
    }
    QPen pen(color, stroke * at.scale, Qt::SolidLine, Qt::FlatCap);
    if (picture.node == GraphPicture::Node::WorkTree) {
        painter.setPen(Qt::NoPen); // the line must not show through the gaps
        painter.setBrush(ground);
        circle(ringSize + 2);
        pen.setDashPattern({1.4, 1.2});
    }
    painter.setPen(pen);
    painter.setBrush(ground);
    circle(ringSize);
}

} // namespace

GraphCell::GraphCell(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(&Theme::shared(), &Theme::colorsChanged, this, [this] { update(); });
}

void GraphCell::setPicture(const QVariant &value)
{
    const auto picture = value.value<GraphPicture>();
    if (m_picture != picture) {
        m_picture = picture;
        update();
        Q_EMIT pictureChanged();
    }
}

void GraphCell::setGround(const QColor &ground)
{
    if (m_ground != ground) {
        m_ground = ground;
        update();
        Q_EMIT groundChanged();
    }
}

void GraphCell::paint(QPainter *painter)
{
    if (m_picture.node == GraphPicture::Node::None)
        return;
    const Measures at {Theme::shared().scale(), height()};
    painter->setRenderHint(QPainter::Antialiasing);
    for (const GraphLine &line : m_picture.lines) {
        painter->setPen(penOf(line, at.scale));
        if (line.kind == GraphLine::Kind::Pass) {
            painter->drawLine(QPointF(at.x(line.lane), 0), QPointF(at.x(line.lane), at.height));
        } else {
            painter->drawPath(
                pathTo(at, m_picture.lane, line.lane, line.kind == GraphLine::Kind::In ? 0 : at.height));
        }
    }
    drawNode(*painter, at, m_picture, m_ground);
}

} // namespace Vesk
