#include "claude/TranscriptTitle.h"

#include "base/Files.h"
#include "base/Text.h"
#include "claude/JsonRead_p.h"
#include "claude/LineParser_p.h"
#include "claude/TranscriptText_p.h"

#include <QFile>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace Vesk
{

namespace
{

// The program writes keys and types plainly, never as escapes.
constexpr std::string_view titleKey = "\"aiTitle\"";
constexpr std::string_view userType = "\"user\"";

// The first `"aiTitle"` that begins in [at, end) and is whole; null without one. A block is passed over when
// its bytes hold no "iTi" in the right place, a test that the compiler makes into a few wide instructions.
const char *findTitleKey(const char *at, const char *end)
{
    constexpr std::ptrdiff_t block = 256;
    constexpr auto length = static_cast<std::ptrdiff_t>(titleKey.size());
    for (; end - at >= block + length; at += block) {
        unsigned char found = 0;
        for (std::ptrdiff_t i = 0; i < block; ++i)
            found |= static_cast<unsigned char>(static_cast<unsigned char>(at[i + 2] == 'i')
                                                & static_cast<unsigned char>(at[i + 3] == 'T')
                                                & static_cast<unsigned char>(at[i + 4] == 'i'));
        if (found == 0)
            continue;
        const std::string_view piece(at, static_cast<std::size_t>(block + length - 1));
        if (const std::size_t hit = piece.find(titleKey); hit != std::string_view::npos)
            return at + hit;
    }
    const std::string_view rest(at, static_cast<std::size_t>(end - at));
    const std::size_t hit = rest.find(titleKey);
    return hit == std::string_view::npos ? nullptr : at + hit;
}

std::optional<QString> asTitle(const std::optional<QString> &said)
{
    if (!said)
        return std::nullopt;
    QString text = Text::trimWhitespace(*said);
    if (text.isEmpty())
        return std::nullopt;
    text.replace(u'\n', u' ');
    return Text::firstCharacters(text, maxTitleCharacters);
}

} // namespace

struct TitleScan::Parser {
    LineParser lines;
};

TitleScan::TitleScan()
    : m_parser(std::make_unique<Parser>())
{
}

TitleScan::~TitleScan() = default;

void TitleScan::reset()
{
    m_begin = m_end = m_looked = 0;
    m_skipping = false;
    m_written.reset();
    m_candidate.reset();
    if (m_buffer.size() > maxTranscriptBytes / 8)
        m_buffer = QByteArray();
}

char *TitleScan::room()
{
    if (m_begin > 0) { // at most once for each line: afterwards it only grows
        std::memmove(m_buffer.data(), m_buffer.constData() + m_begin,
                     static_cast<std::size_t>(m_end - m_begin));
        m_end -= m_begin;
        m_looked -= m_begin;
        m_begin = 0;
    }
    const qsizetype needed = m_end + chunkBytes + LineChunker::padding;
    if (needed > m_buffer.size())
        m_buffer.resize(std::max(needed, m_buffer.size() * 2));
    return m_buffer.data() + m_end;
}

bool TitleScan::take(qsizetype bytes)
{
    const qsizetype arrived = m_end;
    m_end += bytes;
    if (m_skipping) {
        const void *lineEnd =
            std::memchr(m_buffer.constData() + arrived, '\n', static_cast<std::size_t>(bytes));
        m_begin = lineEnd ? static_cast<const char *>(lineEnd) - m_buffer.constData() + 1 : m_end;
        m_looked = m_begin;
        if (!lineEnd)
            return false;
        m_skipping = false;
    }
    if (lookThroughLines())
        return true;
    if (m_end - m_begin > maxTranscriptBytes) {
        m_begin = m_looked = m_end;
        m_skipping = true;
    }
    return false;
}

// Line by line until there is a candidate, then only for a written title.
bool TitleScan::lookThroughLines()
{
    const char *data = m_buffer.constData();
    while (!m_candidate && m_looked < m_end) {
        const void *found = std::memchr(data + m_looked, '\n', static_cast<std::size_t>(m_end - m_looked));
        if (!found) {
            m_looked = m_end;
            return false;
        }
        const qsizetype lineEnd = static_cast<const char *>(found) - data;
        const qsizetype lineBegin = m_begin;
        m_begin = m_looked = lineEnd + 1;
        if (readLine(lineBegin, lineEnd))
            return true;
    }
    if (!m_candidate)
        return false;
    if (lookForWrittenTitle(m_end))
        return true;
    dropReadLines();
    return false;
}

bool TitleScan::lookForWrittenTitle(qsizetype end)
{
    const char *data = m_buffer.constData();
    while (const char *hit = findTitleKey(data + m_looked, data + end)) {
        const qsizetype at = hit - data;
        const void *before = ::memrchr(data + m_begin, '\n', static_cast<std::size_t>(at - m_begin));
        const void *behind = std::memchr(hit, '\n', static_cast<std::size_t>(end - at));
        const qsizetype lineBegin = before ? static_cast<const char *>(before) - data + 1 : m_begin;
        if (!behind) {
            m_looked = at; // found again when its line is whole
            return false;
        }
        const qsizetype lineEnd = static_cast<const char *>(behind) - data;
        m_begin = m_looked = lineEnd + 1;
        if (readLine(lineBegin, lineEnd))
            return true;
    }
    // The key may be cut off at the end.
    m_looked = std::max(m_looked, end - static_cast<qsizetype>(titleKey.size()) + 1);
    return false;
}

void TitleScan::dropReadLines()
{
    const char *data = m_buffer.constData();
    const void *last = ::memrchr(data + m_begin, '\n', static_cast<std::size_t>(m_end - m_begin));
    if (last)
        m_begin = static_cast<const char *>(last) - data + 1;
    m_looked = std::max(m_looked, m_begin);
}

// True when the line has a written title.
bool TitleScan::readLine(qsizetype begin, qsizetype end)
{
    const std::string_view line(m_buffer.constData() + begin, static_cast<std::size_t>(end - begin));
    const bool mayBeTitle = findTitleKey(line.data(), line.data() + line.size()) != nullptr;
    const bool mayBeUser = !m_candidate && line.find(userType) != std::string_view::npos;
    if (!mayBeTitle && !mayBeUser)
        return false;
    const auto object = m_parser->lines.object(line, true);
    if (!object)
        return false;
    if (const auto title = JsonRead::textAt(*object, "aiTitle");
        title && !Text::trimWhitespace(*title).isEmpty()) {
        m_written = Text::firstCharacters(*title, maxTitleCharacters);
        return true;
    }
    if (!m_candidate && JsonRead::viewAt(*object, "type") == "user")
        m_candidate = asTitle(TranscriptText::userText(*object));
    return false;
}

std::optional<QString> TitleScan::finish()
{
    if (!m_written && !m_skipping && m_end > m_begin)
        readLine(m_begin, m_end); // a last line without its end
    return m_written ? m_written : m_candidate;
}

std::optional<QString> quickTitle(const QString &path, TitleScan &scan,
                                  const std::function<bool()> &isCancelled)
{
    scan.reset();
    // O_NONBLOCK: never waits for the writer of what has meanwhile become a pipe.
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return std::nullopt;
    while (!isCancelled || !isCancelled()) {
        const ssize_t count = ::read(file, scan.room(), TitleScan::chunkBytes);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0 || scan.take(count))
            break;
    }
    ::close(file);
    return scan.finish();
}

std::optional<QString> quickTitle(const QString &path)
{
    TitleScan scan;
    return quickTitle(path, scan);
}

std::optional<QString> firstUserMessage(const QString &path)
{
    const Result<QByteArray> bytes = readFile(path, maxTranscriptBytes);
    if (!bytes)
        return std::nullopt;
    std::optional<QString> title;
    LineParser lines;
    LineChunker chunker;
    const auto read = [&](std::string_view line) {
        if (title || line.find(userType) == std::string_view::npos)
            return;
        const auto object = lines.object(line, true);
        if (object && JsonRead::viewAt(*object, "type") == "user")
            title = asTitle(TranscriptText::userText(*object));
    };
    chunker.append(*bytes, read);
    chunker.finish(read);
    return title;
}

} // namespace Vesk
