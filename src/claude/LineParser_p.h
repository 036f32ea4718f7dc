// One parser for line after line of what the agent program writes.
#pragma once

#include "base/LineChunker.h"
#include "claude/JsonRepair_p.h"

#include <simdjson.h>

#include <memory>
#include <optional>
#include <string_view>

namespace Vesk
{

/** Keeps its memory from line to line, but not that of a huge one. What it returns holds until the next call.
 */
class LineParser
{
public:
    /** The object that a line is; absent for anything else. `padded` tells that LineChunker::padding readable
        bytes lie behind the view. */
    [[nodiscard]] std::optional<simdjson::dom::object> object(std::string_view line, bool padded)
    {
        if (m_json->capacity() > keptCapacity && line.size() <= keptCapacity)
            m_json = std::make_unique<simdjson::dom::parser>();
        auto parsed = m_json->parse(line.data(), line.size(), !padded);
        if (mayBeBeyondLimits(parsed.error()))
            parsed = m_json->parse(withinLimits(line));
        simdjson::dom::object root;
        return parsed.get(root) == simdjson::SUCCESS ? std::optional(root) : std::nullopt;
    }

private:
    static_assert(LineChunker::padding >= static_cast<qsizetype>(simdjson::SIMDJSON_PADDING));
    static constexpr std::size_t keptCapacity = 4 * 1024 * 1024;

    std::unique_ptr<simdjson::dom::parser> m_json = std::make_unique<simdjson::dom::parser>();
};

} // namespace Vesk
