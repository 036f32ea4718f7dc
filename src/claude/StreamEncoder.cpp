#include "claude/StreamEncoder.h"

#include "base/Text.h"
#include "claude/JsonSlices.h"

#include <QUuid>

#include <string_view>
#include <utility>
#include <vector>

namespace Vesk
{

namespace
{

std::string_view view(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

// A line end in valid JSON is white space between tokens; on the wire it would end the line.
QByteArray onOneLine(QByteArray json)
{
    json.replace('\n', ' ').replace('\r', ' ');
    return json;
}

QByteArray encodeDecision(const PermissionDecision &decision)
{
    if (!decision.isAllowed)
        return R"({"behavior":"deny","message":)" + JsonSlices::quoted(decision.message) + '}';
    QByteArray json = R"({"behavior":"allow","updatedInput":)";
    json += JsonSlices::isValidObject(view(decision.updatedInput)) ? onOneLine(decision.updatedInput) : "{}";
    if (decision.updatedPermissions && JsonSlices::isValidArray(view(*decision.updatedPermissions)))
        json += R"(,"updatedPermissions":)" + onOneLine(*decision.updatedPermissions);
    return json + '}';
}

QByteArray joined(const std::vector<QByteArray> &items, char open, char close)
{
    QByteArray json(1, open);
    for (const QByteArray &item : items) {
        if (json.size() > 1)
            json += ',';
        json += item;
    }
    return json + close;
}

QByteArray member(const char *key, const QByteArray &value)
{
    return '"' + QByteArray(key) + "\":" + value;
}

QByteArray encodeQuestion(const QuestionRequest::Question &question)
{
    std::vector<QByteArray> options;
    for (const auto &option : question.options) {
        std::vector<QByteArray> members {member("label", JsonSlices::quoted(option.label))};
        if (option.description)
            members.push_back(member("description", JsonSlices::quoted(*option.description)));
        options.push_back(joined(members, '{', '}'));
    }
    return joined({member("question", JsonSlices::quoted(question.question)),
                   member("header", JsonSlices::quoted(question.header)),
                   member("options", joined(options, '[', ']')),
                   member("multiSelect", question.multiSelect ? "true" : "false")},
                  '{', '}');
}

QByteArray encodeQuestions(const QList<QuestionRequest::Question> &questions)
{
    std::vector<QByteArray> items;
    for (const auto &question : questions)
        items.push_back(encodeQuestion(question));
    return joined({member("questions", joined(items, '[', ']'))}, '{', '}');
}

QString answerText(const QuestionAnswer &answer)
{
    QStringList parts = answer.selected;
    if (const QString other = Text::trimWhitespace(answer.other); !other.isEmpty())
        parts << other;
    return parts.join(QLatin1StringView(", "));
}

} // namespace

PermissionDecision PermissionDecision::allow(QByteArray updatedInput,
                                             std::optional<QByteArray> updatedPermissions)
{
    return {true, std::move(updatedInput), std::move(updatedPermissions), {}};
}

PermissionDecision PermissionDecision::deny(QString message)
{
    return {false, {}, std::nullopt, std::move(message)};
}

QByteArray encodeUserMessage(const QString &text)
{
    return R"({"type":"user","message":{"role":"user","content":)" + JsonSlices::quoted(text) + "}}";
}

QByteArray encodeInterruptRequest()
{
    const QByteArray id = QUuid::createUuid().toByteArray(QUuid::WithoutBraces).toUpper();
    return R"({"type":"control_request","request_id":"orvane-interrupt-)" + id
        + R"(","request":{"subtype":"interrupt"}})";
}

QByteArray encodeControlResponse(const QString &requestId, const PermissionDecision &decision)
{
    return R"({"type":"control_response","response":{"subtype":"success","request_id":)"
        + JsonSlices::quoted(requestId) + R"(,"response":)" + encodeDecision(decision) + "}}";
}

QByteArray encodeQuestionUpdatedInput(const QuestionRequest &request, const QList<QuestionAnswer> &answers)
{
    std::vector<QByteArray> entries;
    for (qsizetype i = 0; i < qMin(answers.size(), request.questions.size()); ++i) {
        if (const QString answer = answerText(answers[i]); !answer.isEmpty())
            entries.push_back(JsonSlices::quoted(request.questions[i].question) + ':'
                              + JsonSlices::quoted(answer));
    }
    const QByteArray input = JsonSlices::isValidObject(view(request.rawInputJSON))
        ? request.rawInputJSON
        : encodeQuestions(request.questions);
    return JsonSlices::withMember(view(input), u"answers", joined(entries, '{', '}'));
}

} // namespace Vesk
