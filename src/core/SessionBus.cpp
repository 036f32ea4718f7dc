#include "core/SessionBus.h"

#include <QFileInfo>

namespace Vesk
{

bool hasSessionBus()
{
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")
        || QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

QDBusConnection sessionBus()
{
    return hasSessionBus() ? QDBusConnection::sessionBus()
                           : QDBusConnection(QStringLiteral("vesk-no-session-bus"));
}

} // namespace Vesk
