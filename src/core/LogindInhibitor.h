// Idle inhibition by logind over D-Bus.
#pragma once

#include "core/KeepAwakeController.h"

#include <QDBusConnection>

namespace Vesk
{

/**
 * Asks org.freedesktop.login1 for an `idle` inhibitor. The bus is asked for at the first need, and its calls
 * are asynchronous. What is held is the descriptor that logind hands out.
 */
[[nodiscard]] AcquireSleepInhibition
logindIdleInhibition(std::function<QDBusConnection()> bus = &QDBusConnection::systemBus);

} // namespace Vesk
