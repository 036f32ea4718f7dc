#include "claude/TranscriptLine.h"

#include "claude/JsonRead_p.h"
#include "claude/LineParser_p.h"
#include "claude/StreamRecords_p.h"
#include "claude/TranscriptText_p.h"

namespace Vesk
{

using namespace JsonRead;
using simdjson::dom::array;
using simdjson::dom::element;
using simdjson::dom::object;

namespace
{

std::optional<QString> blockTexts(const array &blocks)
{
    std::optional<QString> joined;
    for (const element item : blocks) {
        object block;
        if (item.get(block) != simdjson::SUCCESS || viewAt(block, "type") != "text")
            continue;
        const auto found = viewAt(block, "text");
        if (!found)
            continue;
        if (joined)
            *joined += u'\n' + text(*found);
        else
            joined = text(*found);
    }
    return joined;
}

} // namespace

namespace TranscriptText
{

std::optional<QString> userText(const object &line)
{
    const auto message = objectAt(line, "message");
    if (!message)
        return std::nullopt;
    if (const auto bare = textAt(*message, "content"))
        return bare;
    return assistantText(line);
}

std::optional<QString> assistantText(const object &line)
{
    const auto message = objectAt(line, "message");
    const auto blocks = message ? arrayAt(*message, "content") : std::nullopt;
    return blocks ? blockTexts(*blocks) : std::nullopt;
}

} // namespace TranscriptText

struct TranscriptDecoder::Parser {
    LineParser lines;
};

TranscriptDecoder::TranscriptDecoder()
    : m_parser(std::make_unique<Parser>())
{
}

TranscriptDecoder::~TranscriptDecoder() = default;

std::optional<TranscriptLine> TranscriptDecoder::decode(std::string_view bytes, bool padded)
{
    std::optional<TranscriptLine> decoded;
    const auto root = m_parser->lines.object(bytes, padded);
    if (!root)
        return decoded;
    TranscriptLine &line = decoded.emplace();
    line.type = wordAt(*root, "type").value_or(QString());
    line.subtype = textAt(*root, "subtype");
    line.aiTitle = textAt(*root, "aiTitle");
    line.isSidechain = boolAt(*root, "isSidechain").value_or(false);
    const bool isUser = line.type == QLatin1StringView("user");
    if (!isUser && line.type != QLatin1StringView("assistant"))
        return decoded;
    if (const auto timestamp = textAt(*root, "timestamp"))
        line.timestamp = QDateTime::fromString(*timestamp, Qt::ISODateWithMs);
    if (const auto message = objectAt(*root, "message"))
        line.message = StreamRecords::message(*message);
    line.text = isUser ? TranscriptText::userText(*root) : TranscriptText::assistantText(*root);
    return decoded;
}

} // namespace Vesk
