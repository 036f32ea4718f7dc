#include "claude/PermissionText.h"

#include "base/Text.h"
#include "claude/JsonSlices.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace Vesk
{

using JsonSlices::Kind;

namespace
{

// What tells most about a call, in the order in which it tells it. The first eight can stand for the whole
// call.
constexpr std::array<QStringView, 12> tellingKeys {u"command", u"file_path", u"path",       u"url",
                                                   u"pattern", u"query",     u"prompt",     u"description",
                                                   u"name",    u"content",   u"old_string", u"new_string"};
constexpr std::size_t summaryKeys = 8;
constexpr qsizetype detailCharacters = 600;

QString latin(std::string_view token)
{
    return QString::fromLatin1(token.data(), static_cast<qsizetype>(token.size()));
}

// Of keys that occur more than once the last counts, as for the program that reads them.
std::vector<JsonSlices::Member> uniqueMembers(std::string_view object)
{
    std::vector<JsonSlices::Member> unique;
    for (JsonSlices::Member &member : JsonSlices::members(object)) {
        const auto same = std::ranges::find(unique, member.key, &JsonSlices::Member::key);
        if (same != unique.end())
            same->value = member.value;
        else
            unique.push_back(std::move(member));
    }
    return unique;
}

QString cut(const QString &text)
{
    if (text.size() <= detailCharacters) // no text has more characters than code units
        return text;
    const QString head = Text::firstCharacters(text, detailCharacters);
    if (head.size() == text.size())
        return text;
    const qsizetype dropped = Text::characterCount(text.sliced(head.size()));
    return head + QStringLiteral("… (+%1자)").arg(dropped);
}

// `Bash(git status:*)` of a rule; absent when it says anything besides.
std::optional<QString> ruleText(std::string_view rule)
{
    std::optional<QString> tool;
    std::optional<QString> content;
    for (const auto &[key, value] : JsonSlices::members(rule)) {
        const bool isTool = key == QLatin1StringView("toolName");
        const bool isKnown = isTool || key == QLatin1StringView("ruleContent");
        if (!isKnown || JsonSlices::kind(value) != Kind::String)
            return std::nullopt;
        (isTool ? tool : content) = JsonSlices::text(value);
    }
    if (!tool)
        return std::nullopt;
    return content ? *tool + u'(' + *content + u')' : *tool;
}

// The rules of a suggestion that does nothing but add them; absent for any other.
std::optional<QStringList> addedRules(std::string_view suggestion)
{
    if (JsonSlices::stringAt(suggestion, u"type") != QStringLiteral("addRules"))
        return std::nullopt;
    std::optional<QStringList> texts;
    for (const auto &[key, value] : JsonSlices::members(suggestion)) {
        if (key == QLatin1StringView("rules") && JsonSlices::kind(value) == Kind::Array) {
            texts.emplace();
            for (const std::string_view rule : JsonSlices::elements(value)) {
                const auto text = ruleText(rule);
                if (!text)
                    return std::nullopt;
                *texts << *text;
            }
        } else if (key != QLatin1StringView("type") && key != QLatin1StringView("behavior")
                   && key != QLatin1StringView("destination")) {
            return std::nullopt;
        }
    }
    return texts;
}

} // namespace

QString permissionSummary(const QString &toolName, std::string_view input)
{
    const auto all = uniqueMembers(input);
    for (const QStringView key : std::span(tellingKeys).first(summaryKeys)) {
        const auto found = std::ranges::find(all, key, &JsonSlices::Member::key);
        if (found == all.end() || JsonSlices::kind(found->value) != Kind::String)
            continue;
        if (const QString text = JsonSlices::text(found->value); !text.isEmpty())
            return text;
    }
    return toolName;
}

QString permissionDetail(const QString &toolName, std::string_view input)
{
    auto all = uniqueMembers(input);
    const auto rank = [](const QString &key) {
        return std::ranges::find(tellingKeys, QStringView(key)) - tellingKeys.begin();
    };
    std::ranges::sort(all, [&](const auto &left, const auto &right) {
        return std::pair(rank(left.key), left.key) < std::pair(rank(right.key), right.key);
    });

    QStringList lines;
    for (const auto &[key, value] : all) {
        if (const auto text = renderDetailValue(value))
            lines << key + QLatin1StringView(": ") + *text;
    }
    return lines.isEmpty() ? toolName : lines.join(u'\n');
}

std::optional<QString> renderDetailValue(std::string_view value)
{
    switch (JsonSlices::kind(value)) {
    case Kind::String: {
        const QString text = Text::trimWhitespace(JsonSlices::text(value));
        return text.isEmpty() ? std::nullopt : std::optional(cut(text));
    }
    case Kind::Number:
    case Kind::Bool:
        return latin(value);
    case Kind::Object:
    case Kind::Array:
        return cut(QString::fromUtf8(JsonSlices::compact(value)));
    case Kind::Null:
        break;
    }
    return std::nullopt;
}

std::optional<QByteArray> sanitizeSuggestions(std::string_view value)
{
    QByteArray kept;
    for (const std::string_view suggestion : JsonSlices::elements(value)) {
        if (JsonSlices::stringAt(suggestion, u"behavior") != QStringLiteral("allow"))
            continue;
        kept += kept.isEmpty() ? '[' : ',';
        // "Always" stays in this project and on this machine, whatever the suggestion said.
        kept += JsonSlices::withMember(suggestion, u"destination", R"("localSettings")");
    }
    return kept.isEmpty() ? std::nullopt : std::optional(kept + ']');
}

QStringList ruleTexts(std::string_view suggestions)
{
    QStringList texts;
    for (const std::string_view suggestion : JsonSlices::elements(suggestions)) {
        if (const auto rules = addedRules(suggestion))
            texts << *rules;
        else
            texts << QString::fromUtf8(JsonSlices::compact(suggestion));
    }
    return texts;
}

} // namespace Vesk
