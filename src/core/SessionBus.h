// The user's D-Bus, which carries what the desktop around the window offers.
#pragma once

#include <QDBusConnection>

#include <functional>

namespace Vesk
{

/** Gives a bus when it is first needed; the connection is not connected where there is none. */
using BusSource = std::function<QDBusConnection()>;

/** Whether the session has a bus: asking for one that is not there may start one. */
[[nodiscard]] bool hasSessionBus();

/** The session's bus; without one a connection that is not connected. */
[[nodiscard]] QDBusConnection sessionBus();

} // namespace Vesk
