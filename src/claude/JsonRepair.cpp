#include "claude/JsonRepair_p.h"

#include <algorithm>

namespace Vesk
{

namespace
{

constexpr std::string_view replacementEscape = "\\ufffd";
constexpr std::size_t unicodeEscapeLength = 6; // \uXXXX

// The code unit of a `\uXXXX` at `at`; absent when there is none.
std::optional<unsigned> unicodeEscape(std::string_view json, std::size_t at)
{
    if (json.size() < at + unicodeEscapeLength || json[at] != '\\' || json[at + 1] != 'u')
        return std::nullopt;
    unsigned unit = 0;
    for (const char c : json.substr(at + 2, 4)) {
        const bool isDigit = c >= '0' && c <= '9';
        const char lower = static_cast<char>(c | 0x20);
        if (!isDigit && (lower < 'a' || lower > 'f'))
            return std::nullopt;
        unit = unit * 16 + static_cast<unsigned>(isDigit ? c - '0' : lower - 'a' + 10);
    }
    return unit;
}

bool isHighSurrogate(unsigned unit)
{
    return (unit & 0xFC00) == 0xD800;
}
bool isLowSurrogate(unsigned unit)
{
    return (unit & 0xFC00) == 0xDC00;
}

// Copies the escape at `at` and gives the place behind it.
std::size_t copyEscape(std::string_view json, std::size_t at, std::string &out)
{
    const auto unit = unicodeEscape(json, at);
    if (!unit) { // any other escape, or a broken one
        const std::string_view escape = json.substr(at, 2);
        out += escape;
        return at + escape.size();
    }
    const std::size_t next = at + unicodeEscapeLength;
    if (isHighSurrogate(*unit) && isLowSurrogate(unicodeEscape(json, next).value_or(0))) {
        out += json.substr(at, 2 * unicodeEscapeLength);
        return at + 2 * unicodeEscapeLength;
    }
    out += isHighSurrogate(*unit) || isLowSurrogate(*unit) ? replacementEscape
                                                           : json.substr(at, unicodeEscapeLength);
    return next;
}

bool isNumberCharacter(char c)
{
    return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

// -?(0|[1-9][0-9]*)(\.[0-9]+)?([eE][+-]?[0-9]+)?
bool isJsonNumber(std::string_view token)
{
    std::size_t at = 0;
    const auto take = [&](std::string_view oneOf) {
        const bool found = at < token.size() && oneOf.find(token[at]) != std::string_view::npos;
        at += found ? 1 : 0;
        return found;
    };
    const auto takeDigits = [&] {
        const std::size_t begin = at;
        while (take("0123456789")) { }
        return at > begin;
    };
    take("-");
    if (!take("0") && !takeDigits())
        return false;
    if (take(".") && !takeDigits())
        return false;
    if (take("eE")) {
        take("+-");
        if (!takeDigits())
            return false;
    }
    return at == token.size();
}

void appendNumber(std::string_view token, simdjson::dom::parser &parser, std::string &out)
{
    constexpr std::size_t digitsOfAnyInteger = 18; // every integer of so many digits fits into 64 bits
    const auto isTaken = [&](const std::string &number) {
        return parser.parse(number).error() == simdjson::SUCCESS;
    };
    const bool isShort =
        token.size() <= digitsOfAnyInteger && token.find_first_of("eE") == std::string_view::npos;
    const std::string number(token);
    if (isShort || !isJsonNumber(token) || isTaken(number))
        out += number;
    else if (token.find_first_of(".eE") == std::string_view::npos && isTaken(number + ".0"))
        out += number + ".0";
    else
        out += token.front() == '-' ? "-1.7976931348623157e308" : "1.7976931348623157e308";
}

} // namespace

bool mayBeBeyondLimits(simdjson::error_code error)
{
    return error == simdjson::NUMBER_ERROR || error == simdjson::STRING_ERROR;
}

std::string withinLimits(std::string_view json)
{
    std::string out;
    out.reserve(json.size() + 16);
    simdjson::dom::parser numbers;
    bool inString = false;
    for (std::size_t at = 0; at < json.size();) {
        const char c = json[at];
        if (inString && c == '\\') {
            at = copyEscape(json, at, out);
        } else if (!inString && (c == '-' || (c >= '0' && c <= '9'))) {
            const auto end = std::find_if_not(json.begin() + static_cast<std::ptrdiff_t>(at), json.end(),
                                              isNumberCharacter);
            const auto length = static_cast<std::size_t>(end - json.begin()) - at;
            appendNumber(json.substr(at, length), numbers, out);
            at += length;
        } else {
            if (c == '"')
                inString = !inString;
            out += c;
            ++at;
        }
    }
    return out;
}

} // namespace Vesk
