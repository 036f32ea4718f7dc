#include "ui/version/WheelPull.h"

namespace Vesk
{

PullTurns turned(const PullTurns &before, qreal pixels, bool atTop, std::chrono::milliseconds now)
{
    PullTurns after = before;
    if (!before.last || now - *before.last > pullRest)
        after = {.isPull = true};
    after.last = now;
    after.isPull = after.isPull && atTop && pixels >= 0;
    after.distance = after.isPull ? after.distance + pixels : 0;
    return after;
}

WheelPull::WheelPull(QObject *parent)
    : QObject(parent)
{
    m_clock.start();
}

void WheelPull::turn(qreal pixels, bool atTop)
{
    const qreal before = m_turns.distance;
    m_turns = turned(m_turns, pixels, atTop, std::chrono::milliseconds(m_clock.elapsed()));
    if (m_turns.distance != before)
        Q_EMIT distanceChanged();
    if (before < m_needed && m_turns.distance >= m_needed)
        Q_EMIT pulled();
}

void WheelPull::rest()
{
    m_turns = {};
    Q_EMIT distanceChanged();
}

} // namespace Vesk
