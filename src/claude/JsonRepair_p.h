// Valid JSON that simdjson will not take, made into what it will.
#pragma once

#include <simdjson.h>

#include <optional>
#include <string>
#include <string_view>

namespace Vesk
{

/** Whether a failure can come of valid JSON beyond the parser's limits: a number outside the 64-bit integers
   or the doubles, or an escape that stands for half of a surrogate pair. The agent program writes both. */
[[nodiscard]] bool mayBeBeyondLimits(simdjson::error_code error);

/** The line with such numbers as the nearest double and such escapes as U+FFFD. Everything else is as it was,
    faults too. */
[[nodiscard]] std::string withinLimits(std::string_view json);

} // namespace Vesk
