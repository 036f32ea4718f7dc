#include "ui/controls/SystemBell.h"

#include <QGuiApplication>

#include <xcb/xcb.h>

namespace Vesk
{

void SystemBell::ring()
{
    constexpr int8_t usualVolume = 0;
    if (const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()) {
        xcb_bell(x11->connection(), usualVolume);
        xcb_flush(x11->connection());
    }
}

} // namespace Vesk
