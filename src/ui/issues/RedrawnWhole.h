// An area that is drawn anew at one go.
#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/**
 * Shows nothing and lies above a thousand parts that move together: whenever it moves with them, all that it
 * covers is drawn anew. The software renderer would add up the places of the parts instead, one by one, and
 * that takes it longer than drawing them.
 */
class RedrawnWhole : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit RedrawnWhole(QQuickItem *parent = nullptr);

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
};

} // namespace Vesk
