#include "base/FreedMemory.h"

#include <cstdlib> // says which library it is of

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace Vesk
{

void returnFreedMemory()
{
#ifdef __GLIBC__
    (void)::malloc_trim(0);
#endif
}

} // namespace Vesk
