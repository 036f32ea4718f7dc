// How the stream fills the rows: text in segments, cut around groups of tool calls.
#include "sessions/ProjectChat.h"

namespace Vesk
{

QUuid ProjectChat::appendRow(ChatMessage::Role role, const QString &text, bool streaming)
{
    ChatMessage row;
    row.role = role;
    row.text = text;
    row.streaming = streaming;
    row.at = QDateTime::currentDateTimeUtc();
    return m_transcript.append(std::move(row));
}

QUuid ProjectChat::activeSegmentID()
{
    if (!m_turn.currentAssistantID.isNull())
        return m_turn.currentAssistantID;
    if (!m_turn.turnAssistantID.isNull())
        return m_turn.turnAssistantID;
    // The child speaks by itself, as when background work ends: its text has a place of its own.
    const QUuid id = appendRow(ChatMessage::Role::Assistant, {}, true);
    m_turn.turnAssistantID = id;
    m_turn.currentAssistantID = id;
    m_turn.runAssistantIDs.append(id);
    m_turn.turnIsUserInitiated = false;
    return id;
}

QUuid ProjectChat::reusableTrailingSegmentID() const
{
    if (m_transcript.isEmpty())
        return {};
    const ChatMessage &last = m_transcript.rows().last();
    const bool reusable = last.role == ChatMessage::Role::Assistant && last.text.isEmpty() && last.streaming;
    return reusable ? last.id : QUuid();
}

void ProjectChat::bufferStreamingText(const QString &text, const QUuid &rowId)
{
    if (m_pendingDeltaRow != rowId) {
        flushPendingDeltas();
        m_pendingDeltaRow = rowId;
    }
    m_pendingDelta += text;
    setCurrentActivity({});
    m_turn.currentToolGroupID = {};
    if (!m_deltaFlushTimer.isActive())
        m_deltaFlushTimer.start();
}

void ProjectChat::flushPendingDeltas()
{
    if (!m_pendingDelta.isEmpty())
        m_transcript.appendText(m_pendingDeltaRow, m_pendingDelta);
    m_pendingDelta.clear();
    m_pendingDeltaRow = {};
}

void ProjectChat::finishStreaming()
{
    flushPendingDeltas();
    m_deltaFlushTimer.stop();
    m_transcript.finishStreaming();
}

void ProjectChat::recordToolUses(const QList<StreamContent> &blocks)
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    QList<ToolActivity> activities;
    for (const StreamContent &block : blocks)
        activities.append(ToolActivity::begun(block, now));
    if (m_transcript.index(m_turn.currentToolGroupID) >= 0) {
        m_transcript.addTools(m_turn.currentToolGroupID, activities);
        return;
    }
    ChatMessage row;
    row.role = ChatMessage::Role::Tools;
    row.tools = activities;
    row.at = now;
    // The empty segment stays below the tools, where the next text belongs.
    const qsizetype placeholder = m_transcript.index(reusableTrailingSegmentID());
    const qsizetype position = placeholder >= 0 ? placeholder : m_transcript.rows().size();
    m_turn.currentToolGroupID = m_transcript.insert(position, std::move(row));
}

void ProjectChat::rollAssistantSegment()
{
    QUuid next = reusableTrailingSegmentID();
    if (next.isNull())
        next = appendRow(ChatMessage::Role::Assistant, {}, true);
    if (m_turn.currentAssistantID == m_turn.turnAssistantID)
        m_turn.turnAssistantID = next;
    m_turn.currentAssistantID = next;
    if (!m_turn.runAssistantIDs.contains(next))
        m_turn.runAssistantIDs.append(next);
}

void ProjectChat::recordToolResults(const QList<StreamContent> &blocks)
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    for (const StreamContent &block : blocks) {
        if (block.type == u"tool_result" && block.toolUseId)
            m_transcript.finishTool(*block.toolUseId, block.resultText(), block.isError, now,
                                    block.contentDroppedBytes);
    }
}

} // namespace Vesk
