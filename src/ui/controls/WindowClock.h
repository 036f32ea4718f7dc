// Shared timers that run only while something on screen shows their time: a still picture costs no frames.
#pragma once

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QQuickItem>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

class QQuickWindow;

namespace Vesk
{

/** A timer that ticks while at least one exposed window has a user of it. */
class WindowClock : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(WindowClock)
    QML_UNCREATABLE("a clock is one of RunningClock and ElapsedClock")

    Q_PROPERTY(bool ticking READ ticking NOTIFY tickingChanged FINAL)

public:
    /** One user more in `window`; each call is paired with one of release(). */
    void retain(QQuickWindow &window);
    /** One user less in `window`. */
    void release(QQuickWindow &window);

    [[nodiscard]] bool ticking() const { return m_timer.isActive(); }

Q_SIGNALS:
    void tickingChanged();

protected:
    WindowClock(int intervalMs, QObject *parent);

    /** Whether it may tick at all. */
    [[nodiscard]] virtual bool allowed() const { return true; }
    virtual void tick() = 0;
    void update();
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QTimer m_timer;
    QHash<QQuickWindow *, int> m_users;
};

// The bases are written with their namespace, which is how the QML type registrar finds them.

/** The clock of everything that turns: twelve positions, four steps a second. */
class RunningClock : public Vesk::WindowClock
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    Q_PROPERTY(int position READ position NOTIFY positionChanged FINAL)
    Q_PROPERTY(bool reduceMotion READ reduceMotion WRITE setReduceMotion NOTIFY reduceMotionChanged FINAL)

public:
    static RunningClock &shared();
    static RunningClock *create(QQmlEngine *engine, QJSEngine *scriptEngine);

    /** 0 to 11, clockwise. */
    [[nodiscard]] int position() const { return m_position; }
    /** The user's wish that nothing moves; the marks then stand still. */
    [[nodiscard]] bool reduceMotion() const { return m_reduceMotion; }
    void setReduceMotion(bool reduce);

Q_SIGNALS:
    void positionChanged();
    void reduceMotionChanged();

protected:
    [[nodiscard]] bool allowed() const override { return !m_reduceMotion; }
    void tick() override;

private:
    explicit RunningClock(QObject *parent);

    int m_position = 0;
    bool m_reduceMotion = false;
};

/** The clock of elapsed times and ages: once a second. */
class ElapsedClock : public Vesk::WindowClock
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    Q_PROPERTY(QDateTime now READ now NOTIFY nowChanged FINAL)

public:
    static ElapsedClock &shared();
    static ElapsedClock *create(QQmlEngine *engine, QJSEngine *scriptEngine);

    /** The time of the last tick; fresh as soon as the clock has a user. */
    [[nodiscard]] QDateTime now() const { return m_now; }

Q_SIGNALS:
    void nowChanged();

protected:
    void tick() override;

private:
    explicit ElapsedClock(QObject *parent);

    QDateTime m_now;
};

/** Holds a clock for the item it stands in, while that is visible and `active`. */
class ClockHold : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(Vesk::WindowClock *clock READ clock WRITE setClock NOTIFY clockChanged FINAL)
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged FINAL)

public:
    explicit ClockHold(QQuickItem *parent = nullptr);
    ~ClockHold() override;

    [[nodiscard]] WindowClock *clock() const { return m_clock; }
    void setClock(WindowClock *clock);
    [[nodiscard]] bool active() const { return m_active; }
    void setActive(bool active);

Q_SIGNALS:
    void clockChanged();
    void activeChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    void update(QQuickWindow *window);
    void letGo();

    QPointer<WindowClock> m_clock;
    QPointer<QQuickWindow> m_heldIn;
    bool m_active = true;
};

} // namespace Vesk
