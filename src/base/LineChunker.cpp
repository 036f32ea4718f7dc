#include "base/LineChunker.h"

#include <simdjson.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace Vesk
{
namespace
{

// What is copied in one step: small enough to stay in the cache until its lines are read.
constexpr qsizetype sliceBytes = 256 * 1024;
// An idle buffer beyond this goes back to the system.
constexpr qsizetype keptCapacity = 4 * 1024 * 1024;

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// One replacement character for each maximal part that cannot be read.
std::string repaired(std::string_view line)
{
    std::string text;
    text.reserve(line.size() + line.size() / 8 + static_cast<std::size_t>(LineChunker::padding));
    const auto size = static_cast<int64_t>(line.size());
    for (int64_t i = 0; i < size;) {
        const int64_t begin = i;
        UChar32 codePoint = 0;
        U8_NEXT_OR_FFFD(line.data(), i, size, codePoint);
        if (codePoint == 0xFFFD)
            text.append("\xEF\xBF\xBD");
        else
            text.append(line.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(i - begin)));
    }
    return text;
}

} // namespace

LineChunker::LineChunker(qsizetype maxLineBytes)
    : m_maxLineBytes(std::max<qsizetype>(maxLineBytes, 1))
{
    static_assert(padding >= static_cast<qsizetype>(simdjson::SIMDJSON_PADDING));
}

void LineChunker::append(QByteArrayView bytes, const Sink &sink)
{
    for (qsizetype at = 0; at < bytes.size(); at += sliceBytes)
        appendSlice(bytes.sliced(at, std::min(sliceBytes, bytes.size() - at)), sink);
}

void LineChunker::appendSlice(QByteArrayView bytes, const Sink &sink)
{
    if (m_skipping) {
        const void *end = std::memchr(bytes.data(), '\n', static_cast<std::size_t>(bytes.size()));
        if (end == nullptr) {
            m_droppedBytes += bytes.size();
            return;
        }
        const qsizetype rest = static_cast<const char *>(end) - bytes.data();
        m_droppedBytes += rest;
        m_skipping = false;
        bytes = bytes.sliced(rest + 1);
    }

    qsizetype scanned = m_end - m_begin; // what was here before holds no line end
    store(bytes);
    scanned += m_begin;
    const char *data = m_buffer.constData();
    while (scanned < m_end) {
        const void *end = std::memchr(data + scanned, '\n', static_cast<std::size_t>(m_end - scanned));
        if (end == nullptr)
            break;
        const qsizetype lineEnd = static_cast<const char *>(end) - data;
        deliver(lineEnd, sink);
        m_begin = lineEnd + 1;
        scanned = m_begin;
    }
    // One byte of grace: the last one may be the CR of a line that just fits.
    if (m_end - m_begin > m_maxLineBytes + 1) {
        deliverPrefix(m_end, sink);
        m_begin = m_end;
        m_skipping = true;
    }
    if (m_begin == m_end) {
        m_begin = 0;
        m_end = 0;
        if (m_buffer.size() > keptCapacity)
            m_buffer = QByteArray();
    }
}

// Moves a line under construction at most once: after that it starts at the front and only grows.
void LineChunker::store(QByteArrayView bytes)
{
    const qsizetype needed = m_end - m_begin + bytes.size() + padding;
    if (m_begin + needed > m_buffer.size()) {
        if (m_begin > 0) {
            char *data = m_buffer.data();
            std::memmove(data, data + m_begin, static_cast<std::size_t>(m_end - m_begin));
            m_end -= m_begin;
            m_begin = 0;
        }
        if (needed > m_buffer.size())
            m_buffer.resize(std::max(needed, m_buffer.size() * 2));
    }
    if (!bytes.isEmpty())
        std::memcpy(m_buffer.data() + m_end, bytes.data(), static_cast<std::size_t>(bytes.size()));
    m_end += bytes.size();
}

void LineChunker::finish(const Sink &sink)
{
    const bool onlyCarriageReturn = m_end - m_begin == 1 && m_buffer.at(m_begin) == '\r';
    if (m_end > m_begin && !onlyCarriageReturn)
        deliver(m_end, sink);
    m_begin = 0;
    m_end = 0;
    m_skipping = false;
    m_buffer = QByteArray();
}

void LineChunker::deliver(qsizetype end, const Sink &sink)
{
    const char *data = m_buffer.constData();
    const qsizetype textEnd = end > m_begin && data[end - 1] == '\r' ? end - 1 : end;
    if (textEnd - m_begin > m_maxLineBytes)
        deliverPrefix(end, sink);
    else
        hand({data + m_begin, static_cast<std::size_t>(textEnd - m_begin)}, sink);
}

void LineChunker::deliverPrefix(qsizetype end, const Sink &sink)
{
    const char *line = m_buffer.constData() + m_begin;
    const qsizetype most = std::min(overlongPrefix, m_maxLineBytes);
    // Not inside a code point: back to the lead byte, unless these bytes are no code point anyway.
    qsizetype size = most;
    while (size > 0 && most - size < 3 && isContinuation(line[size]))
        --size;
    if (isContinuation(line[size]))
        size = most;
    m_droppedBytes += end - m_begin - size;
    hand({line, static_cast<std::size_t>(size)}, sink);
}

void LineChunker::hand(std::string_view line, const Sink &sink)
{
    if (simdjson::validate_utf8(line.data(), line.size())) {
        sink(line);
        return;
    }
    std::string text = repaired(line);
    const std::size_t size = text.size();
    text.append(static_cast<std::size_t>(padding), '\0');
    sink({text.data(), size});
}

} // namespace Vesk
