// The gesture that fetches: what people are told of its end.
#pragma once

#include "git/GitFetch.h"

#include <QString>

namespace Vesk::PullToRefresh
{

enum class Action { Refresh, Fetch };

struct Notice {
    QString text {};
    bool isProblem = false;

    bool operator==(const Notice &) const = default;
};

[[nodiscard]] Notice notice(const GitFetch::Outcome &outcome);

} // namespace Vesk::PullToRefresh
