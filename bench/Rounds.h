// Comparing two pieces of work in one run.
#pragma once

#include <functional>
#include <vector>

namespace Vesk::Bench
{

/** Runs ours and the reference in turn, `rounds` times after one warm-up, and prints both medians in
    milliseconds and the median of the ratios pair by pair, against `limit`. True when it is met. */
bool compare(const char *name, const char *referenceName, int rounds, double limit,
             const std::function<void()> &ours, const std::function<void()> &reference);

/** Prints one measured value against its limit. True when it is met. */
bool report(const char *name, double value, const char *unit, double limit);

/** The middle value; the mean of the two middle ones of an even number. */
[[nodiscard]] double median(std::vector<double> values);

/** Seconds that this process has computed, on all cores. */
[[nodiscard]] double processorSeconds();

/** Seconds of a clock that only runs forward. */
[[nodiscard]] double now();

} // namespace Vesk::Bench
