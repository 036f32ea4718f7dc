#include "app/SignalSources.h"

#include <QSocketNotifier>

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace Vesk
{

namespace
{

constexpr int handledSignals[] = {SIGTERM, SIGINT};
volatile sig_atomic_t wakeDescriptor = -1;

void wake(int)
{
    const auto savedErrno = errno;
    const uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(wakeDescriptor, &one, sizeof one);
    errno = savedErrno;
}

void setHandler(void (*handler)(int))
{
    struct sigaction action {
    };
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int signal : handledSignals)
        sigaction(signal, &action, nullptr);
}

} // namespace

SignalSources::SignalSources(std::function<void()> onTerminate, QObject *parent)
    : QObject(parent)
    , m_onTerminate(std::move(onTerminate))
    , m_descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (m_descriptor < 0)
        return; // the signals keep their default: the process still ends on them
    m_notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [this] {
        uint64_t count = 0;
        [[maybe_unused]] const auto drained = ::read(m_descriptor, &count, sizeof count);
        m_onTerminate();
    });
    wakeDescriptor = m_descriptor;
    setHandler(wake);
}

SignalSources::~SignalSources()
{
    if (m_descriptor < 0)
        return;
    setHandler(SIG_DFL);
    wakeDescriptor = -1;
    ::close(m_descriptor);
}

} // namespace Vesk
