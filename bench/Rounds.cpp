#include "bench/Rounds.h"

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace Vesk::Bench
{

double now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double processorSeconds()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

bool report(const char *name, double value, const char *unit, double limit)
{
    const bool met = value <= limit;
    std::printf("%-44s %10.3f %-3s limit %.3f  %s\n", name, value, unit, limit, met ? "met" : "MISSED");
    std::fflush(stdout);
    return met;
}

bool compare(const char *name, const char *referenceName, int rounds, double limit,
             const std::function<void()> &ours, const std::function<void()> &reference)
{
    std::vector<double> ourTimes, referenceTimes, ratios;
    for (int round = -1; round < rounds; ++round) {
        const double start = now();
        ours();
        const double between = now();
        reference();
        const double end = now();
        if (round < 0)
            continue;
        ourTimes.push_back((between - start) * 1000);
        referenceTimes.push_back((end - between) * 1000);
        ratios.push_back(ourTimes.back() / referenceTimes.back());
    }
    std::printf("%s: %.1f ms, %s: %.1f ms (medians of %d)\n", name, median(ourTimes), referenceName,
                median(referenceTimes), rounds);
    return report(name, median(ratios), "x", limit);
}

} // namespace Vesk::Bench
