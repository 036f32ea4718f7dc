// How full the context of a past conversation is.
#pragma once

#include "sessions/SessionUsage.h"

#include <QString>

#include <optional>

namespace Vesk::ContextTranscript
{

/** How much of a transcript's end is searched for its last answer. */
inline constexpr qint64 maxTailBytes = 8 * 1024 * 1024;

/** What the last answer of the main agent tells; absent without one, or when the conversation has been
   compacted since: what it holds now nobody has said yet. Reads the end of the file only. */
[[nodiscard]] std::optional<ContextLive> restore(const QString &transcriptPath);

} // namespace Vesk::ContextTranscript
