// A rounded ground whose edge may be broken.
#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

class DashedEdge : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor fill MEMBER m_fill NOTIFY changed)
    Q_PROPERTY(QColor edge MEMBER m_edge NOTIFY changed)
    Q_PROPERTY(bool dashed MEMBER m_dashed NOTIFY changed)
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY changed)

public:
    explicit DashedEdge(QQuickItem *parent = nullptr);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void changed();

private:
    QColor m_fill = Qt::transparent;
    QColor m_edge = Qt::transparent;
    bool m_dashed = false;
    qreal m_radius = 0;
};

} // namespace Vesk
