// Running times and ages for bindings on a clock.
#pragma once

#include <QDateTime>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/** Times in words. The present is an argument, so a binding follows the clock that it names. */
class ChatTime : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /** The time from `from` to `now` as a running clock shows it; empty without a `from`. */
    Q_INVOKABLE QString elapsed(const QDateTime &from, const QDateTime &now) const;
    /** How long a prompt has been open; empty without a `since`. */
    Q_INVOKABLE QString waiting(const QDateTime &since, const QDateTime &now) const;
};

} // namespace Vesk
