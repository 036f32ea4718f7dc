// Draws one row of the commit graph.
#pragma once

#include "ui/version/GraphPicture.h"

#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>
#include <QVariant>

namespace Vesk
{

/** Lanes that find no room are cut off at the right. */
class GraphCell : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    /** A GraphPicture. */
    Q_PROPERTY(QVariant picture READ picture WRITE setPicture NOTIFY pictureChanged REQUIRED)
    /** Behind the nodes, so that lines do not show through the rings. */
    Q_PROPERTY(QColor ground READ ground WRITE setGround NOTIFY groundChanged REQUIRED)

public:
    explicit GraphCell(QQuickItem *parent = nullptr);

    [[nodiscard]] QVariant picture() const { return QVariant::fromValue(m_picture); }
    void setPicture(const QVariant &value);
    [[nodiscard]] const QColor &ground() const { return m_ground; }
    void setGround(const QColor &ground);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void pictureChanged();
    void groundChanged();

private:
    GraphPicture m_picture;
    QColor m_ground;
};

} // namespace Vesk
