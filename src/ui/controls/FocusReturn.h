// A popup takes the keyboard; when it goes, the keyboard goes back to where it was.
#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/**
 * One in each popup, told when that is about to show and about to hide. Qt gives the focus back to the
 * content of an ApplicationWindow alone, and only after the popup has faded.
 */
class FocusReturn : public QObject
{
    Q_OBJECT
    QML_ELEMENT

public:
    using QObject::QObject;
    ~FocusReturn() override;

    /** Remembers who has the keyboard in the window of `place`, which may be null. */
    Q_INVOKABLE void begin(QQuickItem *place);
    /** Gives it back, unless somebody has taken it meanwhile. */
    Q_INVOKABLE void end();

private:
    struct Holder {
        QPointer<QQuickItem> item;
        bool ringed = false; ///< by keyboard: its ring comes back too
    };

    QPointer<QQuickWindow> m_window;
    /** Of a popup that was opened from another one, that one's holders follow: it may be gone first. */
    QList<Holder> m_holders;
};

} // namespace Vesk
