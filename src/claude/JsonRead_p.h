// Reading keys of a parsed line: a missing key and one of another type are both absent.
#pragma once

#include "claude/StreamLine.h"

#include <simdjson.h>

#include <optional>
#include <string_view>

namespace Vesk::JsonRead
{

[[nodiscard]] inline QString text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/** The longest prefix of at most `maxBytes` bytes that ends on a code point. */
[[nodiscard]] std::string_view prefix(std::string_view utf8, std::size_t maxBytes);

/** A word of the stream, without an allocation when it is one of the frequent ones. */
[[nodiscard]] QString word(std::string_view utf8);

[[nodiscard]] inline std::optional<std::string_view> viewAt(const simdjson::dom::object &from,
                                                            std::string_view key)
{
    std::string_view found;
    return from.at_key(key).get(found) == simdjson::SUCCESS ? std::optional(found) : std::nullopt;
}

[[nodiscard]] inline std::optional<QString> textAt(const simdjson::dom::object &from, std::string_view key)
{
    const auto found = viewAt(from, key);
    return found ? std::optional(text(*found)) : std::nullopt;
}

[[nodiscard]] inline std::optional<QString> wordAt(const simdjson::dom::object &from, std::string_view key)
{
    const auto found = viewAt(from, key);
    return found ? std::optional(word(*found)) : std::nullopt;
}

[[nodiscard]] inline std::optional<simdjson::dom::object> objectAt(const simdjson::dom::object &from,
                                                                   std::string_view key)
{
    simdjson::dom::object found;
    return from.at_key(key).get(found) == simdjson::SUCCESS ? std::optional(found) : std::nullopt;
}

[[nodiscard]] inline std::optional<simdjson::dom::array> arrayAt(const simdjson::dom::object &from,
                                                                 std::string_view key)
{
    simdjson::dom::array found;
    return from.at_key(key).get(found) == simdjson::SUCCESS ? std::optional(found) : std::nullopt;
}

[[nodiscard]] inline std::optional<bool> boolAt(const simdjson::dom::object &from, std::string_view key)
{
    bool found = false;
    return from.at_key(key).get(found) == simdjson::SUCCESS ? std::optional(found) : std::nullopt;
}

[[nodiscard]] inline std::optional<double> doubleAt(const simdjson::dom::object &from, std::string_view key)
{
    double found = 0;
    return from.at_key(key).get(found) == simdjson::SUCCESS ? std::optional(found) : std::nullopt;
}

/** An integer, also one written as a double (`3.0`); absent from 2^53 on. */
[[nodiscard]] std::optional<qint64> integerAt(const simdjson::dom::object &from, std::string_view key);

/** The texts of an array; its elements of other types are left out. */
[[nodiscard]] std::optional<QStringList> textsAt(const simdjson::dom::object &from, std::string_view key);

/** Any value, the texts in it cut at `maxText` bytes; Undefined for a missing key. */
[[nodiscard]] JSONValue valueAt(const simdjson::dom::object &from, std::string_view key, std::size_t maxText);

} // namespace Vesk::JsonRead
