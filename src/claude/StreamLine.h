// The records that a line of the agent's stream-json output decodes to. Only what the product acts on is
// kept; a missing key and a key of another type both read as absent.
#pragma once

#include <QHash>
#include <QJsonValue>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <string_view>

namespace Vesk
{

/** A JSON value of the stream whose shape is not fixed (`input`, `content`). */
using JSONValue = QJsonValue;

struct StreamDelta {
    QString type;
    std::optional<QString> text; ///< read for `text_delta`
};

struct StreamInner {
    QString type;
    std::optional<StreamDelta> delta;
};

struct StreamContent {
    QString type;
    std::optional<QString> id;
    std::optional<QString> name;
    JSONValue input =
        QJsonValue::Undefined; ///< to summarise: texts in it are cut at `maxInputText` bytes of UTF-8
    std::optional<QString> toolUseId;
    std::optional<QString> content; ///< a string as it is, an array by its `text` items joined with a newline
    qsizetype contentDroppedBytes = 0; ///< what `content` lacks, in UTF-8
    bool isError = false;

    static constexpr std::size_t maxInputText = 4096;
    /** A longer content loses its blanks at both ends, and then what lies beyond this many bytes of UTF-8. */
    static constexpr std::size_t maxContent = 64 * 1024;

    /** The block's content as text; empty when it has none. */
    [[nodiscard]] QString resultText() const { return content.value_or(QString()); }
};

struct StreamMessageUsage {
    std::optional<qint64> inputTokens, cacheReadInputTokens, cacheCreationInputTokens, outputTokens;
};

struct StreamMessage {
    QList<StreamContent> content; ///< empty when the wire has a bare string
    std::optional<StreamMessageUsage> usage;
    std::optional<QString> model;
};

struct StreamModelUsage {
    std::optional<qint64> inputTokens, outputTokens, cacheReadInputTokens, cacheCreationInputTokens,
        contextWindow;
};

struct StreamUsage {
    std::optional<qint64> totalTokens, toolUses, durationMs;
};

struct StreamWorkflowEntry {
    QString type;
    std::optional<qint64> index, phaseIndex, tokens, toolCalls, durationMs, attempt;
    std::optional<QString> title, label, phaseTitle, model, state;
};

/** The `task_*` fields of a system line: background work of the child. */
struct StreamTask {
    std::optional<QString> taskId, toolUseId, subagentType, taskDescription, description, lastToolName,
        summary, outputFile, status, patchStatus, workflowName, taskType;
    std::optional<StreamUsage> usage;
    std::optional<QList<StreamWorkflowEntry>> workflowProgress;
};

/** One window of a subscription's limits. */
struct StreamRateLimitWindow {
    std::optional<double> utilization; ///< 0 to 1
    std::optional<double> resetsAt;    ///< seconds since 1970
};

/** What a `rate_limit_event` tells. */
struct StreamRateLimitInfo {
    std::optional<QString> status, overageStatus, overageDisabledReason;
    std::optional<bool> isUsingOverage;
    std::optional<QHash<QString, StreamRateLimitWindow>> unifiedWindows;
};

/**
 * One decoded line of the agent's standard output.
 *
 * A field is read only on lines of the type that it belongs to: most lines are deltas of text, and they cost
 * no more than their text.
 */
struct StreamLine {
    QString type; ///< never empty by absence: a line without a string `type` does not decode
    std::optional<QString> subtype;
    std::optional<QString> sessionId; ///< of `system` lines
    std::optional<QString> permissionMode;
    std::optional<QStringList> capabilities;
    std::optional<QStringList> slashCommands;
    std::optional<StreamInner> event;
    std::optional<StreamMessage> message;
    std::optional<QString> result;
    bool isError = false;
    QStringList errors;              ///< of an `error_*` result; texts of the program, for the log
    bool isOfBackgroundWork = false; ///< a result of a turn that the child began by itself
    std::optional<double> totalCostUsd;
    std::optional<QStringList> permissionDenials; ///< tool names, empty text for an absent one
    std::optional<QString> parentToolUseId;
    std::optional<QHash<QString, StreamModelUsage>> modelUsage;
    std::optional<StreamTask> task;            ///< for `system` lines whose subtype begins `task_`
    std::optional<qint64> attempt, maxRetries; ///< of `system/api_retry`
    std::optional<QString>
        requestId; ///< of `control_request`, `control_cancel_request` and `control_response`
    std::optional<StreamRateLimitInfo> rateLimitInfo; ///< of `rate_limit_event`
};

/**
 * Decodes lines. One per stream: it keeps its parser's memory from line to line.
 */
class StreamDecoder
{
public:
    StreamDecoder();
    ~StreamDecoder();
    Q_DISABLE_COPY_MOVE(StreamDecoder)

    /** The record, or absent when the line is no JSON object or has no string `type`. `padded` tells that
        LineChunker::padding readable bytes lie behind the view. */
    [[nodiscard]] std::optional<StreamLine> decode(std::string_view line, bool padded = false);

private:
    struct Parser;
    std::unique_ptr<Parser> m_parser;
};

} // namespace Vesk
