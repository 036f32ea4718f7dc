// The sound of the desktop for what could not be done.
#pragma once

namespace Vesk::SystemBell
{

/** Sounds once, where the desktop has a bell: that of Wayland has none. */
void ring();

} // namespace Vesk::SystemBell
