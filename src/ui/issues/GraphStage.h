// Where the picture of a graph stands in its pane: zoom, pan, and what of it is in sight.
#pragma once

#include "issues/IssueGraphViewport.h"

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/**
 * Points and sizes are the pane's; only `sight` and reveal() speak of the layout's points. One of these is
 * `unit` pixels at 100 %: the text size is no matter of the zoom that the person chose.
 */
class GraphStage : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to IssueGraphModel")
    Q_PROPERTY(QSizeF size READ size WRITE setSize NOTIFY changed)
    Q_PROPERTY(qreal unit READ unit WRITE setUnit NOTIFY changed)
    /** Pixels for a point of the layout. */
    Q_PROPERTY(qreal scale READ scale NOTIFY changed)
    Q_PROPERTY(qreal zoom READ zoom NOTIFY changed)
    /** The words of cards could not be read at this scale. */
    Q_PROPERTY(bool tiny READ isTiny NOTIFY changed)
    Q_PROPERTY(QPointF pan READ pan NOTIFY changed)
    Q_PROPERTY(QRectF sight READ sight NOTIFY changed)
    Q_PROPERTY(int percent READ percent NOTIFY changed)
    Q_PROPERTY(bool canZoomIn READ canZoomIn NOTIFY changed)
    Q_PROPERTY(bool canZoomOut READ canZoomOut NOTIFY changed)

public:
    using QObject::QObject;

    [[nodiscard]] QSizeF size() const { return m_size; }
    void setSize(QSizeF size);
    [[nodiscard]] qreal unit() const { return m_unit; }
    void setUnit(qreal unit);
    [[nodiscard]] qreal scale() const { return m_viewport.zoom * m_unit; }
    [[nodiscard]] qreal zoom() const { return m_viewport.zoom; }
    [[nodiscard]] bool isTiny() const { return scale() < tinyScale; }
    [[nodiscard]] QPointF pan() const { return m_viewport.pan; }
    [[nodiscard]] int percent() const { return m_viewport.percent(); }
    [[nodiscard]] bool canZoomIn() const { return m_viewport.canZoomIn(); }
    [[nodiscard]] bool canZoomOut() const { return m_viewport.canZoomOut(); }

    /** The picture of this milestone, empty for all, of this size in points of the layout. One that was not
        shown before is fitted. */
    void show(const QString &milestone, QSizeF layout);

    Q_INVOKABLE void zoomIn();
    Q_INVOKABLE void zoomOut();
    Q_INVOKABLE void fit();
    /** By a factor; what is under the anchor stays there. */
    Q_INVOKABLE void zoomBy(qreal factor, QPointF anchor);
    /** A turn of the wheel, in eighths of a degree; with `zooms` it zooms about the anchor. */
    Q_INVOKABLE void wheel(QPointF turn, QPointF anchor, bool zooms, bool sideways);

    /** While the button is down; `translation` from where it went down. */
    Q_INVOKABLE void drag(QPointF translation);
    /** The button is up: whether this was a click. */
    Q_INVOKABLE bool endDrag();

    /** Moves the picture as little as is needed to see all of this, in points of the layout. */
    void reveal(const QRectF &frame);
    /** What is seen, in points of the layout. */
    [[nodiscard]] QRectF sight() const;
    /** A point of the pane in points of the layout. */
    [[nodiscard]] QPointF inLayout(QPointF point) const;

Q_SIGNALS:
    void changed();
    void fitted(); ///< a picture that was not shown before

private:
    static constexpr double tinyScale = 0.45; // letters are not six pixels high

    void set(const IssueGraphViewport &viewport);
    void fitNew();

    IssueGraphViewport m_viewport;
    IssueGraphAutoFit m_autoFit;
    IssueGraphDrag m_drag;
    QString m_milestone;
    QSizeF m_layout;
    QSizeF m_content; // the layout in pixels at 100 %
    QSizeF m_size;
    qreal m_unit = 1;
};

} // namespace Vesk
