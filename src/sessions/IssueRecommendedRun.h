// How an issue would like to be worked on: the model and effort that its file recommends.
#pragma once

#include "claude/AgentOptions.h"

#include <QString>

#include <optional>

namespace Vesk
{

/** A recommendation that means nothing here. */
struct UnknownIssueRecommendation {
    QString text; ///< as written; empty when it is not fit to be repeated in a transcript
    bool operator==(const UnknownIssueRecommendation &) const = default;
};

struct IssueRecommendedRun {
    std::optional<ClaudeModel> model;
    std::optional<AgentEffort> effort;
    std::optional<UnknownIssueRecommendation> unknownModel {};
    std::optional<UnknownIssueRecommendation> unknownEffort {};
    bool operator==(const IssueRecommendedRun &) const = default;
};

namespace IssueRecommendationMap
{

/** By the word of the picker or of the agent program, in any case. */
[[nodiscard]] std::optional<ClaudeModel> model(const std::optional<QString> &text);
[[nodiscard]] std::optional<AgentEffort> effort(const std::optional<QString> &text);

/** Absent for an empty text and for a `known` one. The text comes from a file that anyone could have written:
    only one plain word of it is kept. */
[[nodiscard]] std::optional<UnknownIssueRecommendation> unknown(const std::optional<QString> &text,
                                                                bool known);

/** The values of an issue file's two fields. */
[[nodiscard]] IssueRecommendedRun run(const std::optional<QString> &modelText,
                                      const std::optional<QString> &effortText);

} // namespace IssueRecommendationMap

} // namespace Vesk
