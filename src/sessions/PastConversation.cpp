#include "sessions/PastConversation.h"

#include "claude/TranscriptTitle.h"
#include "sessions/ContextTranscript.h"
#include "sessions/MessageText.h"

#include <algorithm>

namespace Vesk
{

PastConversation readPastConversation(const ResumableSession &session)
{
    PastConversation past;
    past.messages = ClaudeSessionHistory::loadMessages(session.path, ClaudeSessionHistory::resumedRows, true);
    past.workflows = WorkflowSnapshotFile::restore(WorkflowSnapshotFile::folderOf(session.path));
    past.context = ContextTranscript::restore(session.path);
    past.title = resolveResumeTitle(session, past.messages);
    return past;
}

QString resolveResumeTitle(const ResumableSession &session, const QList<ChatMessage> &messages)
{
    if (session.title != ClaudeSessionHistory::untitled())
        return session.title;
    if (const auto first = firstUserMessage(session.path))
        return *first;
    const auto row = std::ranges::find(messages, ChatMessage::Role::User, &ChatMessage::role);
    return row == messages.end() ? session.title : titleFrom(row->text);
}

} // namespace Vesk
