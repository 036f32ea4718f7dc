#include "ui/controls/WindowClock.h"

#include <QEvent>
#include <QGuiApplication>
#include <QJSEngine>
#include <QPointer>
#include <QQuickWindow>

#include <algorithm>

namespace Vesk
{

namespace
{

constexpr int runningIntervalMs = 250;
constexpr int elapsedIntervalMs = 1000;
constexpr int positions = 12;

} // namespace

WindowClock::WindowClock(int intervalMs, QObject *parent)
    : QObject(parent)
{
    m_timer.setInterval(intervalMs);
    connect(&m_timer, &QTimer::timeout, this, [this] { tick(); });
}

void WindowClock::retain(QQuickWindow &window)
{
    auto &users = m_users[&window];
    if (users++ == 0) {
        window.installEventFilter(this);
        connect(&window, &QObject::destroyed, this, [this, gone = &window] {
            m_users.remove(gone);
            update();
        });
    }
    update();
}

void WindowClock::release(QQuickWindow &window)
{
    const auto users = m_users.find(&window);
    if (users == m_users.end())
        return;
    if (--*users == 0) {
        m_users.erase(users);
        window.removeEventFilter(this);
        disconnect(&window, nullptr, this, nullptr);
    }
    update();
}

bool WindowClock::eventFilter(QObject *watched, QEvent *event)
{
    // The window's own state changes when it handles the event: look after that.
    if (event->type() == QEvent::Expose || event->type() == QEvent::Hide || event->type() == QEvent::Show)
        QMetaObject::invokeMethod(this, &WindowClock::update, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

void WindowClock::update()
{
    const auto shown =
        std::any_of(m_users.keyBegin(), m_users.keyEnd(), [](auto *window) { return window->isExposed(); });
    const bool run = shown && allowed();
    if (run == m_timer.isActive())
        return;
    if (run) {
        m_timer.start();
        tick();
    } else {
        m_timer.stop();
    }
    Q_EMIT tickingChanged();
}

RunningClock::RunningClock(QObject *parent)
    : WindowClock(runningIntervalMs, parent)
{
}

RunningClock &RunningClock::shared()
{
    static QPointer<RunningClock> clock;
    if (!clock)
        clock = new RunningClock(qGuiApp);
    return *clock;
}

RunningClock *RunningClock::create(QQmlEngine * /*engine*/, QJSEngine * /*scriptEngine*/)
{
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
}

void RunningClock::setReduceMotion(bool reduce)
{
    if (reduce == m_reduceMotion)
        return;
    m_reduceMotion = reduce;
    Q_EMIT reduceMotionChanged();
    update();
}

void RunningClock::tick()
{
    m_position = (m_position + 1) % positions;
    Q_EMIT positionChanged();
}

ElapsedClock::ElapsedClock(QObject *parent)
    : WindowClock(elapsedIntervalMs, parent)
    , m_now(QDateTime::currentDateTimeUtc())
{
}

ElapsedClock &ElapsedClock::shared()
{
    static QPointer<ElapsedClock> clock;
    if (!clock)
        clock = new ElapsedClock(qGuiApp);
    return *clock;
}

ElapsedClock *ElapsedClock::create(QQmlEngine * /*engine*/, QJSEngine * /*scriptEngine*/)
{
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
}

void ElapsedClock::tick()
{
    m_now = QDateTime::currentDateTimeUtc();
    Q_EMIT nowChanged();
}

ClockHold::ClockHold(QQuickItem *parent)
    : QQuickItem(parent)
{
}

ClockHold::~ClockHold()
{
    letGo();
}

void ClockHold::setClock(WindowClock *clock)
{
    if (clock == m_clock)
        return;
    letGo();
    m_clock = clock;
    update(window());
    Q_EMIT clockChanged();
}

void ClockHold::setActive(bool active)
{
    if (active == m_active)
        return;
    m_active = active;
    update(window());
    Q_EMIT activeChanged();
}

void ClockHold::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemSceneChange)
        update(value.window);
    else if (change == ItemVisibleHasChanged)
        update(window());
    QQuickItem::itemChange(change, value);
}

void ClockHold::update(QQuickWindow *window)
{
    QQuickWindow *wanted = m_active && isVisible() ? window : nullptr;
    if (wanted == m_heldIn)
        return;
    letGo();
    if (wanted && m_clock) {
        m_clock->retain(*wanted);
        m_heldIn = wanted;
    }
}

void ClockHold::letGo()
{
    if (m_clock && m_heldIn)
        m_clock->release(*m_heldIn);
    m_heldIn = nullptr;
}

} // namespace Vesk
