// A tab that is being dragged through the window.
#pragma once

#include "ui/shell/Panes.h"

#include <QPointF>
#include <QRectF>

namespace Vesk
{

/** Between begin() and drop() or cancel(). Points and rectangles are in the panes' area. */
class TabDrag : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by Workspace")
    Q_PROPERTY(bool active READ active NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QPointF point READ point NOTIFY changed)
    /** Where it would go; empty when letting it go does nothing. */
    Q_PROPERTY(QRectF mark READ mark NOTIFY changed)
    /** The pane among whose tabs it would go, 0 when not among tabs. */
    Q_PROPERTY(int stripPane READ stripPane NOTIFY changed)

public:
    explicit TabDrag(Panes &panes, QObject *parent = nullptr);

    [[nodiscard]] bool active() const { return !m_session.isNull(); }
    [[nodiscard]] QString title() const { return m_title; }
    [[nodiscard]] QPointF point() const { return m_point; }
    [[nodiscard]] QRectF mark() const { return m_drop.mark; }
    [[nodiscard]] int stripPane() const { return m_drop.onStrip ? m_drop.pane : 0; }

    Q_INVOKABLE void begin(const QString &key, const QString &title);
    /** `strip`: the height of the tabs of every pane. */
    Q_INVOKABLE void moveTo(const QPointF &point, double strip);
    /** On the strip: before the tab at `position`, with this mark. */
    Q_INVOKABLE void aimBetweenTabs(int position, const QRectF &mark);
    Q_INVOKABLE void drop();
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void changed();

private:
    Panes &m_panes;
    QUuid m_session;
    QString m_title;
    QPointF m_point;
    PaneDrop m_drop;
    int m_position = -1;
};

} // namespace Vesk
