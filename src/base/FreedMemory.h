// Memory that was let go and that the allocator keeps.
#pragma once

namespace Vesk
{

/** Gives it back to the system. Takes a while after much was let go: for a thread other than the main one. */
void returnFreedMemory();

} // namespace Vesk
