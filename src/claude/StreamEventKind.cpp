#include "claude/StreamEventKind.h"

namespace Vesk
{

namespace
{

StreamEventKind classifySystem(const QString &subtype)
{
    if (subtype == QLatin1StringView("init"))
        return StreamEventKind::Init;
    if (subtype == QLatin1StringView("status"))
        return StreamEventKind::Status;
    if (subtype == QLatin1StringView("thinking_tokens"))
        return StreamEventKind::ThinkingTokens;
    if (subtype == QLatin1StringView("api_retry"))
        return StreamEventKind::ApiRetry;
    const bool isOrdinary = subtype == QLatin1StringView("permission_denied")
        || subtype == QLatin1StringView("compact_boundary") || subtype.startsWith(QLatin1StringView("hook_"));
    return isOrdinary ? StreamEventKind::KnownSystem : StreamEventKind::Unknown;
}

} // namespace

StreamEventKind classify(const StreamLine &line)
{
    const QString &type = line.type;
    const bool isSystem = type == QLatin1StringView("system");
    if (type == QLatin1StringView("control_request"))
        return StreamEventKind::ControlRequest;
    if (type == QLatin1StringView("control_cancel_request"))
        return StreamEventKind::ControlCancel;
    if (type == QLatin1StringView("control_response"))
        return StreamEventKind::ControlResponse;
    if (type == QLatin1StringView("rate_limit_event"))
        return StreamEventKind::RateLimit;
    if (isSystem && line.subtype && line.subtype->startsWith(QLatin1StringView("task_")))
        return StreamEventKind::Task;
    if (line.parentToolUseId)
        return StreamEventKind::Subagent;
    if (isSystem)
        return classifySystem(line.subtype.value_or(QString()));
    if (type == QLatin1StringView("stream_event"))
        return StreamEventKind::StreamEvent;
    if (type == QLatin1StringView("assistant"))
        return StreamEventKind::Assistant;
    if (type == QLatin1StringView("user"))
        return StreamEventKind::User;
    if (type == QLatin1StringView("result"))
        return StreamEventKind::Result;
    return StreamEventKind::Unknown;
}

} // namespace Vesk
