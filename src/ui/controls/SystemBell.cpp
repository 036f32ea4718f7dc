#include "ui/controls/SystemBell.h"

#include <QGuiApplication>

#include <xcb/xcb.h>

namespace Vesk
{

void SystemBell::ring()
{
    constexpr int8_t usualVolume = 0;
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    // A platform without windows has the interface, but no server.
    if (auto *connection = x11 ? x11->connection() : nullptr) {
        xcb_bell(connection, usualVolume);
        xcb_flush(connection);
    }
}

} // namespace Vesk
