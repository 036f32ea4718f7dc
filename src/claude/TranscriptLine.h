// The lines of a transcript, the file in which the agent program keeps a conversation: one JSON object a
// line.
#pragma once

#include "claude/StreamLine.h"

#include <QDateTime>
#include <QString>

#include <memory>
#include <optional>
#include <string_view>

namespace Vesk
{

/** One line, as far as Vesk reads it. A missing key and one of another type are both absent. */
struct TranscriptLine {
    QString type; ///< empty when absent
    std::optional<QString> subtype;
    std::optional<QString> aiTitle;
    QDateTime timestamp; ///< invalid when absent
    bool isSidechain = false;
    /** What was said: of a `user` line its bare text or its text blocks, of an `assistant` line its text
       blocks, joined by newlines. Absent when there are none, as on a line of tool results. */
    std::optional<QString> text;
    StreamMessage message; ///< of `user` and `assistant` lines
};

/** Decodes lines; keeps its parser's memory from line to line. */
class TranscriptDecoder
{
public:
    TranscriptDecoder();
    ~TranscriptDecoder();
    Q_DISABLE_COPY_MOVE(TranscriptDecoder)

    /** The record, or absent when the line is no JSON object. `padded` tells that LineChunker::padding
       readable bytes lie behind the view. */
    [[nodiscard]] std::optional<TranscriptLine> decode(std::string_view line, bool padded = false);

private:
    struct Parser;
    std::unique_ptr<Parser> m_parser;
};

} // namespace Vesk
