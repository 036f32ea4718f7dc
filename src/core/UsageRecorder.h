// Where every part of the program reports that a feature was used.
#pragma once

#include "core/FeatureSignal.h"

#include <functional>

namespace Vesk
{

/** The one process-wide road for usage signals. Main thread only. */
class UsageRecorder
{
public:
    using Sink = std::function<void(FeatureSignal)>;

    /** Counts one use. Without a sink it does nothing: recording never disturbs the user's work. */
    static void record(FeatureSignal signal);

    /** Sets what the signals go to; an empty function ends the recording. */
    static void setSink(Sink sink);
};

} // namespace Vesk
