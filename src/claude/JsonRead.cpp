#include "claude/JsonRead_p.h"

#include <QJsonArray>
#include <QJsonObject>

#include <cmath>
#include <utility>

namespace Vesk::JsonRead
{

using namespace simdjson::dom;

namespace
{

// As deep as the parser lets a line be (1024), so the recursion has a bound.
JSONValue jsonValue(const element &value, std::size_t maxText)
{
    switch (value.type()) {
    case element_type::STRING:
        return text(prefix(std::string_view(value), maxText));
    case element_type::BOOL:
        return bool(value);
    case element_type::INT64:
        return static_cast<qint64>(int64_t(value));
    case element_type::UINT64:
        return static_cast<double>(uint64_t(value));
    case element_type::DOUBLE:
        return double(value);
    case element_type::ARRAY: {
        QJsonArray items;
        for (const element item : array(value))
            items.append(jsonValue(item, maxText));
        return items;
    }
    case element_type::OBJECT: {
        QJsonObject members;
        for (const auto [key, member] : object(value))
            members.insert(text(key), jsonValue(member, maxText));
        return members;
    }
    case element_type::NULL_VALUE:
        break;
    }
    return QJsonValue::Null;
}

} // namespace

std::string_view prefix(std::string_view utf8, std::size_t maxBytes)
{
    if (utf8.size() <= maxBytes)
        return utf8;
    while (maxBytes > 0 && (static_cast<unsigned char>(utf8[maxBytes]) & 0xC0) == 0x80)
        --maxBytes;
    return utf8.substr(0, maxBytes);
}

QString word(std::string_view utf8)
{
    // The most frequent come first.
    using Known = std::pair<std::string_view, QString>;
    static const Known words[] {
        {"stream_event", QStringLiteral("stream_event")},
        {"content_block_delta", QStringLiteral("content_block_delta")},
        {"text_delta", QStringLiteral("text_delta")},
        {"system", QStringLiteral("system")},
        {"thinking_tokens", QStringLiteral("thinking_tokens")},
        {"thinking_delta", QStringLiteral("thinking_delta")},
        {"input_json_delta", QStringLiteral("input_json_delta")},
        {"assistant", QStringLiteral("assistant")},
        {"user", QStringLiteral("user")},
        {"tool_use", QStringLiteral("tool_use")},
        {"tool_result", QStringLiteral("tool_result")},
        {"text", QStringLiteral("text")},
        {"status", QStringLiteral("status")},
        {"task_progress", QStringLiteral("task_progress")},
        {"content_block_start", QStringLiteral("content_block_start")},
        {"content_block_stop", QStringLiteral("content_block_stop")},
        {"signature_delta", QStringLiteral("signature_delta")},
        {"message_start", QStringLiteral("message_start")},
        {"message_delta", QStringLiteral("message_delta")},
        {"message_stop", QStringLiteral("message_stop")},
    };
    for (const auto &[known, text] : words) {
        if (known == utf8)
            return text;
    }
    return text(utf8);
}

// From here on a double no longer names one integer. What is below it can also be summed without a thought of
// the end of 64 bits.
constexpr double firstInexactInteger = 9007199254740992.0;

std::optional<qint64> integerAt(const object &from, std::string_view key)
{
    const auto found = from.at_key(key);
    double number = 0;
    if (found.get(number) == simdjson::SUCCESS && std::trunc(number) == number
        && std::abs(number) < firstInexactInteger)
        return static_cast<qint64>(number);
    return std::nullopt;
}

std::optional<QStringList> textsAt(const object &from, std::string_view key)
{
    const auto items = arrayAt(from, key);
    if (!items)
        return std::nullopt;
    QStringList texts;
    for (const element item : *items) {
        std::string_view found;
        if (item.get(found) == simdjson::SUCCESS)
            texts << text(found);
    }
    return texts;
}

JSONValue valueAt(const object &from, std::string_view key, std::size_t maxText)
{
    element found;
    return from.at_key(key).get(found) == simdjson::SUCCESS ? jsonValue(found, maxText)
                                                            : JSONValue(QJsonValue::Undefined);
}

} // namespace Vesk::JsonRead
