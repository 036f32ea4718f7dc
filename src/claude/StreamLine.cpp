#include "claude/StreamLine.h"

#include "claude/JsonRead_p.h"
#include "claude/LineParser_p.h"
#include "claude/StreamRecords_p.h"

#include <utility>

namespace Vesk
{

using namespace JsonRead;
using simdjson::dom::object;

namespace
{

// By far the most lines are these: their keys are gone over once.
void readStreamEvent(const object &from, StreamLine &line)
{
    for (const auto [key, value] : from) {
        object event;
        std::string_view parent;
        if (key == "event" && value.get(event) == simdjson::SUCCESS)
            StreamRecords::readInner(event, line.event);
        else if (key == "parent_tool_use_id" && value.get(parent) == simdjson::SUCCESS)
            line.parentToolUseId = text(parent);
    }
}

void readSystem(const object &from, StreamLine &line)
{
    line.subtype = wordAt(from, "subtype");
    if (!line.subtype || *line.subtype == QLatin1StringView("thinking_tokens"))
        return;
    line.sessionId = textAt(from, "session_id");
    line.permissionMode = textAt(from, "permissionMode");
    if (line.subtype->startsWith(QLatin1StringView("task_"))) {
        line.task = StreamRecords::task(from);
    } else if (*line.subtype == QLatin1StringView("init")) {
        line.capabilities = textsAt(from, "capabilities");
        line.slashCommands = textsAt(from, "slash_commands");
    } else if (*line.subtype == QLatin1StringView("api_retry")) {
        line.attempt = integerAt(from, "attempt");
        line.maxRetries = integerAt(from, "max_retries");
    }
}

void readResult(const object &from, StreamLine &line)
{
    line.subtype = textAt(from, "subtype");
    line.result = textAt(from, "result");
    line.isError = boolAt(from, "is_error").value_or(false);
    line.errors = textsAt(from, "errors").value_or(QStringList());
    if (const auto origin = objectAt(from, "origin"))
        line.isOfBackgroundWork = viewAt(*origin, "kind") == "task-notification";
    line.totalCostUsd = doubleAt(from, "total_cost_usd");
    if (const auto denials = arrayAt(from, "permission_denials"))
        line.permissionDenials = StreamRecords::denials(*denials);
    if (const auto models = objectAt(from, "modelUsage"))
        line.modelUsage = StreamRecords::modelUsage(*models);
}

void readOther(const object &from, std::string_view type, StreamLine &line)
{
    line.subtype = textAt(from, "subtype");
    if (type == "control_request" || type == "control_cancel_request") {
        line.requestId = textAt(from, "request_id");
    } else if (type == "control_response") {
        if (const auto response = objectAt(from, "response"))
            line.requestId = textAt(*response, "request_id");
    } else if (type == "rate_limit_event") {
        if (const auto info = objectAt(from, "rate_limit_info"))
            line.rateLimitInfo = StreamRecords::rateLimitInfo(*info);
    }
}

} // namespace

struct StreamDecoder::Parser {
    LineParser lines;
};

StreamDecoder::StreamDecoder()
    : m_parser(std::make_unique<Parser>())
{
}

StreamDecoder::~StreamDecoder() = default;

std::optional<StreamLine> StreamDecoder::decode(std::string_view text, bool padded)
{
    std::optional<StreamLine> decoded;
    const auto root = m_parser->lines.object(text, padded);
    const auto type = root ? viewAt(*root, "type") : std::nullopt;
    if (!type)
        return decoded;

    StreamLine &line = decoded.emplace();
    line.type = word(*type);
    if (*type == "stream_event") {
        readStreamEvent(*root, line);
        return decoded;
    }
    line.parentToolUseId = textAt(*root, "parent_tool_use_id");
    if (*type == "system") {
        readSystem(*root, line);
    } else if (*type == "assistant" || *type == "user") {
        if (const auto message = objectAt(*root, "message"))
            line.message = StreamRecords::message(*message);
    } else if (*type == "result") {
        readResult(*root, line);
    } else {
        readOther(*root, *type, line);
    }
    return decoded;
}

} // namespace Vesk
