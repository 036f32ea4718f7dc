// Notices when the person has looked at a session.
#pragma once

#include "ui/shell/SessionRoster.h"

#include <QDeadlineTimer>
#include <QHash>

namespace Vesk
{

/** A session with news counts as seen when it stays in view for a while. */
class SeenWatch : public QObject
{
public:
    /** `afterMs`: how long that is. */
    SeenWatch(SessionRoster &roster, int afterMs);

    /** What can be seen now; whatever leaves this list begins anew when it comes back. */
    void setInView(const QList<QUuid> &sessions);

private:
    void onTimeout();
    void schedule();

    SessionRoster &m_roster;
    int m_afterMs;
    QHash<QUuid, QDeadlineTimer> m_due;
    QTimer m_next;
};

} // namespace Vesk
