#include "claude/ControlRequests.h"

#include "claude/JsonSlices.h"
#include "claude/PermissionText.h"
#include "claude/StreamEncoder.h"

#include <utility>

namespace Vesk
{

using JsonSlices::Kind;

namespace
{

// A request for the use of a tool, as slices of its line.
struct ToolRequest {
    QString toolName;
    std::string_view request;
    std::optional<QString> requestId;
    std::string_view input; // "{}" when it is no object
    bool hasInput = false;
};

std::optional<std::string_view> memberOfKind(std::string_view object, QStringView key, Kind kind)
{
    const auto found = JsonSlices::value(object, key);
    return found && JsonSlices::kind(*found) == kind ? found : std::nullopt;
}

std::optional<ToolRequest> toolRequest(std::string_view line)
{
    if (!JsonSlices::isValidObject(line)
        || JsonSlices::stringAt(line, u"type") != QStringLiteral("control_request"))
        return std::nullopt;
    const auto request = memberOfKind(line, u"request", Kind::Object);
    if (!request || JsonSlices::stringAt(*request, u"subtype") != QStringLiteral("can_use_tool"))
        return std::nullopt;
    const auto toolName = JsonSlices::stringAt(*request, u"tool_name");
    if (!toolName)
        return std::nullopt;
    const auto input = memberOfKind(*request, u"input", Kind::Object);
    return ToolRequest {*toolName, *request, JsonSlices::stringAt(line, u"request_id"), input.value_or("{}"),
                        input.has_value()};
}

QByteArray bytes(std::string_view slice)
{
    return {slice.data(), static_cast<qsizetype>(slice.size())};
}

QList<QuestionRequest::Option> parseOptions(std::string_view question)
{
    QList<QuestionRequest::Option> options;
    const auto items = memberOfKind(question, u"options", Kind::Array);
    for (const std::string_view item : JsonSlices::elements(items.value_or("[]"))) {
        const auto label = JsonSlices::stringAt(item, u"label");
        if (!label)
            continue;
        auto description = JsonSlices::stringAt(item, u"description");
        if (description && description->isEmpty())
            description.reset();
        options.append({*label, std::move(description)});
    }
    return options;
}

QList<QuestionRequest::Question> parseQuestions(std::string_view input)
{
    QList<QuestionRequest::Question> questions;
    const auto items = memberOfKind(input, u"questions", Kind::Array);
    for (const std::string_view item : JsonSlices::elements(items.value_or("[]"))) {
        const auto text = JsonSlices::stringAt(item, u"question");
        if (!text)
            continue;
        questions.append({static_cast<int>(questions.size()), *text,
                          JsonSlices::stringAt(item, u"header").value_or(QString()), parseOptions(item),
                          memberOfKind(item, u"multiSelect", Kind::Bool) == "true"});
    }
    return questions;
}

struct DenyTexts {
    QString unattended;
    QString replaced;
    QString unreadable;
};

template <typename Request>
RequestOutcome<Request> outcome(std::string_view line, bool interactive, std::optional<Request> parsed,
                                const std::optional<Request> &pending, const DenyTexts &texts)
{
    RequestOutcome<Request> result;
    if (interactive && parsed) {
        if (pending && pending->requestId != parsed->requestId)
            result.denyLines.append(denyLine(pending->requestId, texts.replaced));
        result.newPending = std::move(parsed);
    } else if (const auto id = parseControlRequestId(line)) {
        result.denyLines.append(denyLine(*id, interactive ? texts.unreadable : texts.unattended));
    }
    return result;
}

} // namespace

QString questionToolName()
{
    return QStringLiteral("AskUserQuestion");
}

std::optional<QString> controlRequestToolName(std::string_view line)
{
    const auto tool = toolRequest(line);
    return tool ? std::optional(tool->toolName) : std::nullopt;
}

std::optional<QString> parseControlRequestId(std::string_view line)
{
    return JsonSlices::isValidObject(line) ? JsonSlices::stringAt(line, u"request_id") : std::nullopt;
}

std::optional<PermissionRequest> parsePermissionRequest(std::string_view line, bool remote)
{
    const auto tool = toolRequest(line);
    if (!tool || !tool->requestId)
        return std::nullopt;
    PermissionRequest request;
    request.requestId = *tool->requestId;
    request.toolName = tool->toolName;
    request.displayName = JsonSlices::stringAt(tool->request, u"display_name").value_or(tool->toolName);
    request.toolUseId = JsonSlices::stringAt(tool->request, u"tool_use_id");
    request.summary = permissionSummary(tool->toolName, tool->input);
    request.detail = permissionDetail(tool->toolName, tool->input);
    request.rawInputJSON = bytes(tool->input);
    if (const auto suggestions = memberOfKind(tool->request, u"permission_suggestions", Kind::Array))
        request.rawSuggestionsJSON = sanitizeSuggestions(*suggestions);
    if (request.rawSuggestionsJSON)
        request.ruleTexts = ruleTexts(request.rawSuggestionsJSON->toStdString());
    request.remote = remote;
    return request;
}

std::optional<QuestionRequest> parseQuestionRequest(std::string_view line, bool remote)
{
    const auto tool = toolRequest(line);
    if (!tool || !tool->requestId || !tool->hasInput || tool->toolName != questionToolName())
        return std::nullopt;
    QList<QuestionRequest::Question> questions = parseQuestions(tool->input);
    if (questions.isEmpty())
        return std::nullopt;
    return QuestionRequest {*tool->requestId, JsonSlices::stringAt(tool->request, u"tool_use_id"),
                            std::move(questions), bytes(tool->input), remote};
}

RequestOutcome<PermissionRequest> controlRequestOutcome(std::string_view line, bool interactive, bool remote,
                                                        const std::optional<PermissionRequest> &pending)
{
    return outcome(line, interactive, parsePermissionRequest(line, remote), pending,
                   {QStringLiteral("비대화형 실행 — 자동 거부"), QStringLiteral("새 권한 요청으로 대체됨"),
                    QStringLiteral("해석할 수 없는 권한 요청 — 자동 거부")});
}

RequestOutcome<QuestionRequest> questionRequestOutcome(std::string_view line, bool interactive, bool remote,
                                                       const std::optional<QuestionRequest> &pending)
{
    return outcome(line, interactive, parseQuestionRequest(line, remote), pending,
                   {QStringLiteral("비대화형 실행 — 질문 자동 거부"),
                    QStringLiteral("새 질문 요청으로 대체됨"),
                    QStringLiteral("해석할 수 없는 질문 요청 — 자동 거부")});
}

QByteArray denyLine(const QString &requestId, const QString &message)
{
    return encodeControlResponse(requestId, PermissionDecision::deny(message));
}

} // namespace Vesk
