// What was said on a parsed line of a transcript.
#pragma once

#include <QString>

#include <simdjson.h>

#include <optional>

namespace Vesk::TranscriptText
{

/** `message.content` when it is a string, else the texts of its "text" blocks joined by newlines. */
[[nodiscard]] std::optional<QString> userText(const simdjson::dom::object &line);

/** The texts of the "text" blocks alone. */
[[nodiscard]] std::optional<QString> assistantText(const simdjson::dom::object &line);

} // namespace Vesk::TranscriptText
