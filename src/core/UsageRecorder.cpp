#include "core/UsageRecorder.h"

#include <utility>

namespace Vesk
{

namespace
{

UsageRecorder::Sink &currentSink()
{
    static UsageRecorder::Sink sink;
    return sink;
}

} // namespace

void UsageRecorder::record(FeatureSignal signal)
{
    if (currentSink())
        currentSink()(signal);
}

void UsageRecorder::setSink(Sink sink)
{
    currentSink() = std::move(sink);
}

} // namespace Vesk
