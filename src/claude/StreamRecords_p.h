// The records inside a line, read from its parsed form.
#pragma once

#include "claude/StreamLine.h"

#include <simdjson.h>

namespace Vesk::StreamRecords
{

/** Nothing when the event has no `type`. */
void readInner(const simdjson::dom::object &event, std::optional<StreamInner> &into);
[[nodiscard]] StreamMessage message(const simdjson::dom::object &from);
/** From a whole `task_*` line. */
[[nodiscard]] StreamTask task(const simdjson::dom::object &line);
/** The entries that are objects. */
[[nodiscard]] QList<StreamWorkflowEntry> workflowEntries(const simdjson::dom::array &from);
[[nodiscard]] QHash<QString, StreamModelUsage> modelUsage(const simdjson::dom::object &from);
/** The tool names of the denials, an empty text for an absent one. */
[[nodiscard]] QStringList denials(const simdjson::dom::array &from);
[[nodiscard]] StreamRateLimitInfo rateLimitInfo(const simdjson::dom::object &from);

} // namespace Vesk::StreamRecords
