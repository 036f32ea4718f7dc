// What a line of the stream is to the reader of a session.
#pragma once

#include "claude/StreamLine.h"

namespace Vesk
{

/** The first of these, in this order, that a line answers to. */
enum class StreamEventKind {
    ControlRequest,  ///< the child asks; read from the raw line (ControlRequests.h)
    ControlCancel,   ///< the child withdraws a request: `requestId`
    ControlResponse, ///< the answer to a request of ours: `requestId`
    RateLimit,       ///< `rateLimitInfo`
    Task,            ///< background work: `task`
    Subagent,        ///< any other line of a sub-agent: `parentToolUseId`
    Init,
    Status,         ///< `permissionMode`, when it is there, is the mode that governs from now on
    ThinkingTokens, ///< the model thinks; comes once per thinking delta
    ApiRetry,       ///< `attempt` of `maxRetries`
    KnownSystem,    ///< a system line that is ordinary and that nothing is done with
    StreamEvent,
    Assistant,
    User,
    Result,
    Unknown, ///< to be counted: the agent program may have changed
};

[[nodiscard]] StreamEventKind classify(const StreamLine &line);

} // namespace Vesk
