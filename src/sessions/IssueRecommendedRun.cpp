#include "sessions/IssueRecommendedRun.h"

#include "base/Text.h"

#include <algorithm>

namespace Vesk
{

namespace
{

constexpr qsizetype longestRepeated = 32;

template <typename Choices>
auto chosen(const Choices &choices, const std::optional<QString> &text)
    -> std::optional<typename Choices::value_type>
{
    const QString wanted = Text::trimWhitespace(text.value_or(QString()));
    const auto *found = std::ranges::find_if(choices, [&](auto choice) {
        return wanted.compare(label(choice), Qt::CaseInsensitive) == 0
            || wanted.compare(word(choice), Qt::CaseInsensitive) == 0;
    });
    return found == choices.end() ? std::nullopt : std::optional(*found);
}

bool isAsciiLetterOfWord(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

} // namespace

std::optional<ClaudeModel> IssueRecommendationMap::model(const std::optional<QString> &text)
{
    return chosen(allModels, text);
}

std::optional<AgentEffort> IssueRecommendationMap::effort(const std::optional<QString> &text)
{
    return chosen(allEfforts, text);
}

std::optional<UnknownIssueRecommendation> IssueRecommendationMap::unknown(const std::optional<QString> &text,
                                                                          bool known)
{
    if (known || !text || text->isEmpty()) {
        return std::nullopt;
    }
    const bool fit = text->size() <= longestRepeated && std::ranges::all_of(*text, isAsciiLetterOfWord);
    return UnknownIssueRecommendation {fit ? *text : QString()};
}

IssueRecommendedRun IssueRecommendationMap::run(const std::optional<QString> &modelText,
                                                const std::optional<QString> &effortText)
{
    IssueRecommendedRun run {.model = model(modelText), .effort = effort(effortText)};
    run.unknownModel = unknown(modelText, run.model.has_value());
    run.unknownEffort = unknown(effortText, run.effort.has_value());
    return run;
}

} // namespace Vesk
