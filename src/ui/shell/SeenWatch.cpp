#include "ui/shell/SeenWatch.h"

#include <algorithm>

namespace Vesk
{

SeenWatch::SeenWatch(SessionRoster &roster, int afterMs)
    : m_roster(roster)
    , m_afterMs(afterMs)
{
    m_next.setSingleShot(true);
    connect(&m_next, &QTimer::timeout, this, &SeenWatch::onTimeout);
}

void SeenWatch::setInView(const QList<QUuid> &sessions)
{
    QHash<QUuid, QDeadlineTimer> due;
    for (const QUuid &id : sessions) {
        const RosterSession *session = m_roster.find(id);
        if (session && session->unseen) {
            due.insert(id, m_due.value(id, QDeadlineTimer(m_afterMs)));
        }
    }
    m_due = due;
    schedule();
}

void SeenWatch::onTimeout()
{
    QList<QUuid> seen;
    for (auto it = m_due.cbegin(); it != m_due.cend(); ++it) {
        if (it.value().hasExpired()) {
            seen.append(it.key());
        }
    }
    for (const QUuid &id : seen) {
        m_due.remove(id);
        m_roster.noteSeen(id);
    }
    schedule();
}

void SeenWatch::schedule()
{
    const auto nearest = std::min_element(m_due.cbegin(), m_due.cend());
    if (nearest == m_due.cend()) {
        m_next.stop();
    } else {
        m_next.start(static_cast<int>(nearest->remainingTime()) + 1);
    }
}

} // namespace Vesk
