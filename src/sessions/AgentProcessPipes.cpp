#include "sessions/AgentProcessPipes_p.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

namespace Vesk
{

namespace
{

// How much one flush writes before the main loop gets its turn: a quick reader could keep us here otherwise.
constexpr qsizetype maxBytesPerFlush = qsizetype {1024} * 1024;

// Writing into a pipe whose reader is gone fails with EPIPE and sends a signal that ends the program. This
// holds the signal back for one write, whatever the rest of the program has arranged for it.
ssize_t writeQuietly(int fd, const char *bytes, size_t count)
{
    sigset_t brokenPipe;
    sigset_t before;
    ::sigemptyset(&brokenPipe);
    ::sigaddset(&brokenPipe, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &brokenPipe, &before);
    const ssize_t written = ::write(fd, bytes, count);
    const int error = errno;
    if (written < 0 && error == EPIPE) {
        const timespec now = {0, 0};
        (void)::sigtimedwait(&brokenPipe, nullptr, &now);
    }
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    errno = error;
    return written;
}

// A child's standard descriptors are set with dup2, which would be a no-op on a descriptor that has the
// wanted number already, and leave it to be closed on exec.
Descriptor aboveStandard(Descriptor descriptor)
{
    if (descriptor.get() > STDERR_FILENO)
        return descriptor;
    return Descriptor(::fcntl(descriptor.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

} // namespace

Descriptor &Descriptor::operator=(Descriptor &&other) noexcept
{
    if (this != &other) {
        reset();
        m_fd = std::exchange(other.m_fd, -1);
    }
    return *this;
}

void Descriptor::reset()
{
    if (m_fd >= 0)
        ::close(std::exchange(m_fd, -1));
}

Result<Pipe> makePipe(PipeDirection direction)
{
    std::array<int, 2> ends = {-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return failure(ErrorKind::Unavailable, qt_error_string(errno));
    Descriptor readEnd = aboveStandard(Descriptor(ends[0]));
    Descriptor writeEnd = aboveStandard(Descriptor(ends[1]));
    if (!readEnd.isOpen() || !writeEnd.isOpen())
        return failure(ErrorKind::Unavailable, qt_error_string(errno));
    Pipe pipe;
    const bool fromChild = direction == PipeDirection::FromChild;
    pipe.ours = std::move(fromChild ? readEnd : writeEnd);
    pipe.childs = std::move(fromChild ? writeEnd : readEnd);
    if (::fcntl(pipe.ours.get(), F_SETFL, ::fcntl(pipe.ours.get(), F_GETFL) | O_NONBLOCK) != 0)
        return failure(ErrorKind::Unavailable, qt_error_string(errno));
    return pipe;
}

void OutputPipe::open(Descriptor end, std::function<void()> onReadable)
{
    m_end = std::move(end);
    m_notifier = std::make_unique<QSocketNotifier>(m_end.get(), QSocketNotifier::Read);
    m_notifier->setEnabled(false);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), std::move(onReadable));
}

void OutputPipe::setWatching(bool watching)
{
    if (m_notifier)
        m_notifier->setEnabled(watching);
}

void OutputPipe::close()
{
    if (m_notifier) {
        m_notifier->setEnabled(false);
        m_notifier.release()->deleteLater(); // this may run from its own signal
    }
    m_end.reset();
}

qsizetype OutputPipe::readOnce(qsizetype most, const Sink &sink)
{
    std::array<char, batchBytes> bytes; // NOLINT(*-member-init): filled by read
    ssize_t count = -1;
    do {
        count = ::read(m_end.get(), bytes.data(), static_cast<size_t>(qMin(most, batchBytes)));
    } while (count < 0 && errno == EINTR);
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK))
        return 0;
    if (count <= 0) {
        close();
        return 0;
    }
    sink(QByteArrayView(bytes.data(), count));
    return count;
}

void OutputPipe::readBatch(const Sink &sink)
{
    if (isOpen())
        (void)readOnce(batchBytes, sink);
}

void OutputPipe::drain(const Sink &sink)
{
    int waiting = 0;
    if (isOpen() && ::ioctl(m_end.get(), FIONREAD, &waiting) == 0) {
        qsizetype remaining = waiting;
        while (remaining > 0 && isOpen()) {
            const qsizetype count = readOnce(remaining, sink);
            if (count == 0)
                break;
            remaining -= count;
        }
    }
    close();
}

void InputPipe::open(Descriptor end)
{
    m_end = std::move(end);
    m_notifier = std::make_unique<QSocketNotifier>(m_end.get(), QSocketNotifier::Write);
    m_notifier->setEnabled(false);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { flush(); });
}

bool InputPipe::push(QByteArray bytes)
{
    if (!isOpen())
        return true;
    if (m_queuedBytes + bytes.size() > maxQueuedBytes)
        return false;
    m_queuedBytes += bytes.size();
    m_queue.push_back(std::move(bytes));
    if (m_writing && !m_notifier->isEnabled())
        flush();
    return true;
}

void InputPipe::startWriting()
{
    m_writing = true;
    flush();
}

void InputPipe::flush()
{
    if (!m_end.isOpen() || !m_writing)
        return;
    qsizetype budget = maxBytesPerFlush;
    while (!m_queue.empty() && budget > 0) {
        const QByteArray &first = m_queue.front();
        const ssize_t count = writeQuietly(m_end.get(), first.constData() + m_written,
                                           static_cast<size_t>(qMin(first.size() - m_written, budget)));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK))
            break;
        if (count < 0) {
            abort(); // the child closed its side
            return;
        }
        m_written += count;
        m_queuedBytes -= count;
        budget -= count;
        if (m_written == first.size()) {
            m_queue.pop_front();
            m_written = 0;
        }
    }
    if (m_queue.empty() && m_closing)
        abort();
    else
        m_notifier->setEnabled(!m_queue.empty());
}

void InputPipe::close()
{
    if (!isOpen())
        return;
    m_closing = true;
    if (m_queue.empty())
        abort();
}

void InputPipe::abort()
{
    if (m_notifier) {
        m_notifier->setEnabled(false);
        m_notifier.release()->deleteLater(); // this may run from its own signal
    }
    m_end.reset();
    m_queue.clear();
    m_queuedBytes = 0;
    m_written = 0;
}

} // namespace Vesk
