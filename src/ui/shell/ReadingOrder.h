// In which order the keyboard and assistive tools go through items.
#pragma once

#include <QObject>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/** Both follow the order of an item's children, which repeaters make by when they came. */
class ReadingOrder : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /** Puts an item right behind another one of the same parent; it is then drawn above that too. */
    Q_INVOKABLE void follow(QQuickItem *item, QQuickItem *before) const;
};

} // namespace Vesk
