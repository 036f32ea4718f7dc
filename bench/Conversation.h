// Rows as a long session has them.
#pragma once

#include "sessions/ChatMessage.h"

#include <QList>

namespace Vesk::Bench
{

/** `count` rows in turn: a question, an answer, a tool call, an answer. */
[[nodiscard]] QList<ChatMessage> conversation(int count);

} // namespace Vesk::Bench
