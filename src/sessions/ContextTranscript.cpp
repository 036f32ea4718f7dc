#include "sessions/ContextTranscript.h"

#include "base/LineChunker.h"
#include "claude/TranscriptLine.h"

#include <QFile>

#include <algorithm>
#include <string_view>

namespace Vesk::ContextTranscript
{

namespace
{

constexpr qint64 firstTailBytes = 256 * 1024;

enum class Told { Nothing, Usage, Compacted };

Told readLine(TranscriptDecoder &decoder, std::string_view text, std::optional<ContextLive> &live)
{
    // Most lines are results of tools; they are not worth parsing.
    if (text.find("\"usage\"") == std::string_view::npos
        && text.find("\"compact_boundary\"") == std::string_view::npos)
        return Told::Nothing;
    const auto line = decoder.decode(text, true);
    if (!line || line->isSidechain)
        return Told::Nothing;
    if (line->type == u"system" && line->subtype == QStringLiteral("compact_boundary"))
        return Told::Compacted;
    if (line->type != u"assistant")
        return Told::Nothing;
    live = noteContextUsage(std::nullopt, line->message.usage, line->message.model);
    return live ? Told::Usage : Told::Nothing;
}

// From the last line to the first. Absent when nothing was told.
std::optional<Told> readBackward(QByteArray tail, bool isWhole, std::optional<ContextLive> &live)
{
    TranscriptDecoder decoder;
    qsizetype end = tail.size();
    tail.append(LineChunker::padding, '\0');
    const std::string_view bytes(tail.constData(), static_cast<std::size_t>(end));
    while (end > 0) {
        const std::size_t before = bytes.rfind('\n', static_cast<std::size_t>(end - 1));
        if (before == std::string_view::npos && !isWhole)
            break; // the first line is cut off
        const qsizetype begin = before == std::string_view::npos ? 0 : static_cast<qsizetype>(before) + 1;
        const Told told = readLine(
            decoder, bytes.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin)),
            live);
        if (told != Told::Nothing)
            return told;
        end = begin - 1;
    }
    return std::nullopt;
}

} // namespace

std::optional<ContextLive> restore(const QString &transcriptPath)
{
    QFile file(transcriptPath);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const qint64 size = file.size();
    for (qint64 tail = firstTailBytes;; tail = maxTailBytes) {
        const qint64 begin = std::max<qint64>(0, size - tail);
        std::optional<ContextLive> live;
        const bool isRead = file.seek(begin);
        const auto told = isRead ? readBackward(file.read(tail), begin == 0, live) : std::nullopt;
        if (told == Told::Usage) {
            live->isRestored = true;
            return live;
        }
        if (!isRead || told || begin == 0 || tail == maxTailBytes)
            return std::nullopt;
    }
}

} // namespace Vesk::ContextTranscript
