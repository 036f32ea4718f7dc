#include "git/GitCancel.h"

#include <sys/eventfd.h>
#include <unistd.h>

namespace Vesk
{

GitCancel::GitCancel()
    : m_descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
}

GitCancel::~GitCancel()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

void GitCancel::request()
{
    if (m_requested.exchange(true))
        return;
    if (m_descriptor >= 0)
        (void)::eventfd_write(m_descriptor, 1);
}

} // namespace Vesk
