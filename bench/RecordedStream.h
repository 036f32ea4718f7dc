// A stream as the agent program writes it in a long working session, for the benchmarks.
#pragma once

#include <QByteArray>

namespace Vesk::Bench
{

/**
 * Whole lines of together at least `bytes` bytes: turns of thinking, streamed text in Korean and English,
 * tool calls with inputs and results of a few kilobytes, now and then a large file, one result line a turn.
 * The same bytes at every call.
 */
[[nodiscard]] QByteArray recordedStream(qsizetype bytes);

} // namespace Vesk::Bench
