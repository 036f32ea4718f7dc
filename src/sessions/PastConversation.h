// All that a resumed session begins with, read from the disk in one go.
#pragma once

#include "sessions/ClaudeSessionHistory.h"
#include "sessions/SessionUsage.h"
#include "sessions/WorkflowSnapshotFile.h"

#include <optional>

namespace Vesk
{

/** What was read of a conversation. */
struct PastConversation {
    QList<ChatMessage> messages; ///< empty for a transcript that is too large or gone
    WorkflowSnapshotFile::Restored workflows;
    std::optional<ContextLive> context;
    QString title;
};

/** Reads it all. Nothing that fails to be read fails the whole. For a pool thread. */
[[nodiscard]] PastConversation readPastConversation(const ResumableSession &session);

/** The conversation's own title; for an untitled one what the person said first, in the file or else in these
    rows; else still untitled. Reads the file of an untitled one. */
[[nodiscard]] QString resolveResumeTitle(const ResumableSession &session, const QList<ChatMessage> &messages);

} // namespace Vesk
