// The file that the agent program leaves of a workflow beside the transcript.
#pragma once

#include "claude/StreamLine.h"

#include <QByteArray>

namespace Vesk
{

/** Its keys, all optional; one of another type reads as absent. */
struct WorkflowSnapshot {
    std::optional<QString> runId, taskId, status, timestamp, summary, workflowName;
    std::optional<double> startTime; ///< seconds or milliseconds since 1970
    std::optional<qint64> durationMs, totalTokens, totalToolCalls;
    std::optional<QList<StreamWorkflowEntry>> workflowProgress;
};

/** Absent when the bytes are no JSON object. */
[[nodiscard]] std::optional<WorkflowSnapshot> decodeWorkflowSnapshot(const QByteArray &json);

} // namespace Vesk
