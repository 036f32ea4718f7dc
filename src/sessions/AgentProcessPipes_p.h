// Our side of a child's three pipes: bounded reads and queued writes on non-blocking descriptors.
//
// QProcess has channels of its own, but it tells nobody when a child closes its output, and it reads into a
// buffer without a limit. Here the kernel's pipe is the buffer, so a child that writes faster than we read
// waits.
#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QSocketNotifier>

#include <deque>
#include <functional>
#include <memory>

namespace Vesk
{

/** A file descriptor that closes itself. */
class Descriptor
{
public:
    Descriptor() = default;
    explicit Descriptor(int fd)
        : m_fd(fd)
    {
    }
    Descriptor(Descriptor &&other) noexcept
        : m_fd(std::exchange(other.m_fd, -1))
    {
    }
    Descriptor &operator=(Descriptor &&other) noexcept;
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor() { reset(); }

    void reset();
    [[nodiscard]] int get() const { return m_fd; }
    [[nodiscard]] bool isOpen() const { return m_fd >= 0; }

private:
    int m_fd = -1;
};

struct Pipe {
    Descriptor ours; ///< non-blocking
    Descriptor childs;
};

enum class PipeDirection { FromChild, ToChild };

/** A pipe whose two ends close on exec and are no standard descriptors. Unavailable when the system has none
 * left. */
[[nodiscard]] Result<Pipe> makePipe(PipeDirection direction);

/** The end of a pipe that a child writes into. */
class OutputPipe
{
public:
    /** The most that is read at a time: what one turn of the main loop has to digest. */
    static constexpr qsizetype batchBytes = qsizetype {64} * 1024;
    using Sink = std::function<void(QByteArrayView bytes)>;

    /** Calls `onReadable` from the main loop while bytes or the end wait, once setWatching(true) was called.
     */
    void open(Descriptor end, std::function<void()> onReadable);
    void setWatching(bool watching);
    [[nodiscard]] bool isOpen() const { return m_end.isOpen(); }

    /** Reads one batch. At the end of the stream, or on an error, the pipe is closed. */
    void readBatch(const Sink &sink);
    /** Reads what lies in the pipe at this moment and closes it, even if somebody else still holds its other
     * end. */
    void drain(const Sink &sink);
    void close();

private:
    qsizetype readOnce(qsizetype most, const Sink &sink);

    Descriptor m_end;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

/** The end of a pipe that a child reads from, with what it has not taken yet. */
class InputPipe
{
public:
    /** What may wait for a child that does not read. Lines beyond it are dropped whole. */
    static constexpr qsizetype maxQueuedBytes = qsizetype {64} * 1024 * 1024;

    void open(Descriptor end);
    /** True while lines are taken: from open() to a close, or until the child closed its side. */
    [[nodiscard]] bool isOpen() const { return m_end.isOpen() && !m_closing; }

    /** Queues bytes and writes what the pipe takes now. False when they were dropped. */
    bool push(QByteArray bytes);
    /** Lets the queued bytes go out; before this, push() only queues. */
    void startWriting();
    /** Closes after what is queued. */
    void close();
    /** Closes at once; what is queued is lost. */
    void abort();

private:
    void flush();

    Descriptor m_end;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::deque<QByteArray> m_queue;
    qsizetype m_queuedBytes = 0;
    qsizetype m_written = 0; // of the first in the queue
    bool m_writing = false;
    bool m_closing = false;
};

} // namespace Vesk
