// Reading what a child asks a person for, and the pure part of the decision what to do about it. All of it
// works on the raw line, because inputs and suggestions go back as they came. Lines that do not hold what is
// looked for give an absent value.
#pragma once

#include "claude/PromptRequests.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>
#include <string_view>

namespace Vesk
{

/** The tool that asks questions instead of asking for leave. */
[[nodiscard]] QString questionToolName();

/** The tool of a `can_use_tool` request. */
[[nodiscard]] std::optional<QString> controlRequestToolName(std::string_view line);

/** The top-level id of any line. */
[[nodiscard]] std::optional<QString> parseControlRequestId(std::string_view line);

[[nodiscard]] std::optional<PermissionRequest> parsePermissionRequest(std::string_view line, bool remote);

/** Absent also when no readable question remains. */
[[nodiscard]] std::optional<QuestionRequest> parseQuestionRequest(std::string_view line, bool remote);

/** The lines to write at once, and the request that then waits for a person. */
template <typename Request>
struct RequestOutcome {
    QList<QByteArray> denyLines;
    std::optional<Request> newPending; ///< absent: what was pending stays as it is
};

/** What becomes of a permission request, given the one that is pending. */
[[nodiscard]] RequestOutcome<PermissionRequest>
controlRequestOutcome(std::string_view line, bool interactive, bool remote,
                      const std::optional<PermissionRequest> &pending);

/** What becomes of a question request, given the one that is pending. */
[[nodiscard]] RequestOutcome<QuestionRequest>
questionRequestOutcome(std::string_view line, bool interactive, bool remote,
                       const std::optional<QuestionRequest> &pending);

/** A denial for a request, as a line. */
[[nodiscard]] QByteArray denyLine(const QString &requestId, const QString &message);

} // namespace Vesk
