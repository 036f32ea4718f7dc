// The one place where an address is handed to the desktop.
#pragma once

#include <QUrl>

#include <functional>

namespace Vesk::DesktopOpener
{

/** Opens an address in the program that the desktop has for it; false when there is none. */
bool open(const QUrl &url);

/** Addresses go here from now on instead of to the desktop; an empty function ends that. For tests. */
void replace(std::function<bool(const QUrl &)> opener);

} // namespace Vesk::DesktopOpener
