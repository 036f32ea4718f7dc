// Cuts a byte stream into lines, however the bytes arrive.
#pragma once

#include <QByteArray>

#include <functional>
#include <string_view>

namespace Vesk
{

/**
 * Collects the bytes of one pipe and gives them back line by line.
 *
 * A line ends at 0x0A; one 0x0D before it is dropped; blank lines are given as empty ones. Invalid UTF-8 is
 * repaired with U+FFFD, never lost. Bytes are looked at once: a line of many megabytes that arrives in
 * small pieces costs time in proportion to its length. A line beyond `maxLineBytes` is given as its first
 * `overlongPrefix` bytes (fewer when the cap itself is smaller, or to keep a code point whole); its rest is
 * dropped and counted.
 */
class LineChunker
{
public:
    /** One whole line without its end, valid UTF-8. The view and `padding` bytes behind it are readable until
        the sink returns, so that the JSON reader can parse it where it lies. */
    using Sink = std::function<void(std::string_view line)>;

    static constexpr qsizetype defaultMaxLineBytes = 64 * 1024 * 1024;
    static constexpr qsizetype overlongPrefix = 4096;
    static constexpr qsizetype padding =
        64; ///< readable bytes behind every given line (simdjson asks for this)

    explicit LineChunker(qsizetype maxLineBytes = defaultMaxLineBytes);

    /** Adds bytes and hands every line that they complete to `sink`, in order. */
    void append(QByteArrayView bytes, const Sink &sink);

    /** The end of the stream: hands over what remains, if anything does (a lone CR is nothing). */
    void finish(const Sink &sink);

    /** Bytes dropped from overlong lines so far. */
    [[nodiscard]] qsizetype droppedBytes() const { return m_droppedBytes; }

private:
    void appendSlice(QByteArrayView bytes, const Sink &sink);
    void store(QByteArrayView bytes);
    void deliver(qsizetype end, const Sink &sink);
    void deliverPrefix(qsizetype end, const Sink &sink);
    void hand(std::string_view line, const Sink &sink);

    QByteArray m_buffer; // [m_begin, m_end) is the line under construction; `padding` bytes lie behind m_end
    qsizetype m_begin = 0;
    qsizetype m_end = 0;
    qsizetype m_maxLineBytes;
    qsizetype m_droppedBytes = 0;
    bool m_skipping = false; // inside the rest of an overlong line
};

} // namespace Vesk
