// Keeps the panes of the window from one run to the next.
#pragma once

#include "ui/shell/Panes.h"

#include <QTimer>

namespace Vesk
{

class Preferences;

/** Restores the panes when it is made, and writes them down when they have been the same for a moment. */
class PaneMemory : public QObject
{
public:
    PaneMemory(Preferences &preferences, Panes &panes, const SessionRoster &roster);
    ~PaneMemory() override;

private:
    void save();

    Preferences &m_preferences;
    Panes &m_panes;
    const SessionRoster &m_roster;
    QTimer m_settled;
};

} // namespace Vesk
