#include "claude/WorkflowSnapshot.h"

#include "claude/JsonRead_p.h"
#include "claude/LineParser_p.h"
#include "claude/StreamRecords_p.h"

namespace Vesk
{

using namespace JsonRead;

std::optional<WorkflowSnapshot> decodeWorkflowSnapshot(const QByteArray &json)
{
    LineParser parser;
    const auto root = parser.object({json.constData(), static_cast<std::size_t>(json.size())}, false);
    if (!root)
        return std::nullopt;
    WorkflowSnapshot snapshot;
    snapshot.runId = textAt(*root, "runId");
    snapshot.taskId = textAt(*root, "taskId");
    snapshot.status = textAt(*root, "status");
    snapshot.timestamp = textAt(*root, "timestamp");
    snapshot.summary = textAt(*root, "summary");
    snapshot.workflowName = textAt(*root, "workflowName");
    snapshot.startTime = doubleAt(*root, "startTime");
    snapshot.durationMs = integerAt(*root, "durationMs");
    snapshot.totalTokens = integerAt(*root, "totalTokens");
    snapshot.totalToolCalls = integerAt(*root, "totalToolCalls");
    if (const auto progress = arrayAt(*root, "workflowProgress"))
        snapshot.workflowProgress = StreamRecords::workflowEntries(*progress);
    return snapshot;
}

} // namespace Vesk
