// Keeps the panes of the window, and the conversations in them, from one run to the next.
#pragma once

#include "ui/shell/Panes.h"

#include <QTimer>

namespace Vesk
{

struct ResumableSession;

/**
 * Makes the panes as they were when it is made, and writes them down when they have been the same for a
 * moment. A conversation has its place in what is written from the one run to its tab in the next: whenever
 * this one ends, no place is lost.
 */
class PaneMemory : public QObject
{
public:
    PaneMemory(Runtime &runtime, Panes &panes, const SessionRoster &roster);
    ~PaneMemory() override;

    /** Opens the conversations of the earlier run in their panes; nothing is read but what is shown then.
       Once, after the first frame. */
    void restore();

private:
    void reopen(const QList<ResumableSession> &sessions);
    void readShown();
    void save();

    Runtime &m_runtime;
    Panes &m_panes;
    const SessionRoster &m_roster;
    QTimer m_settled;
};

} // namespace Vesk
