#include "sessions/PromptDesk.h"

#include "base/Text.h"
#include "claude/ControlRequests.h"
#include "claude/StreamEncoder.h"

#include <algorithm>

namespace Vesk
{

namespace
{

constexpr qsizetype maxNameCharacters = 80;

QString nameOf(const QuestionRequest &request)
{
    if (request.questions.isEmpty())
        return questionToolName();
    return Text::clipped(Text::firstLine(request.questions.first().question), maxNameCharacters);
}

bool hasAnswer(const QuestionAnswer &answer)
{
    return !answer.selected.isEmpty() || !Text::trimWhitespace(answer.other).isEmpty();
}

QString remoteActivity()
{
    return QStringLiteral("원격 요청 처리 중…");
}

} // namespace

PromptDesk::PromptDesk(Write write)
    : m_write(std::move(write))
{
}

PromptDesk::Arrival PromptDesk::handleControlRequest(std::string_view line, bool interactive, bool remote,
                                                     const QDateTime &now)
{
    return controlRequestToolName(line) == questionToolName()
        ? questionArrived(line, interactive, remote, now)
        : permissionArrived(line, interactive, remote, now);
}

// A new prompt takes the place of whatever waits; a waiting one of the other sort is denied with `denial`.
template <typename Outcome, typename Own, typename Other>
PromptDesk::Arrival PromptDesk::arrived(const Outcome &outcome, Own &own, Other &other, const QString &denial,
                                        Arrival::Kind kind, const QDateTime &now)
{
    Arrival arrival;
    if (outcome.newPending) {
        arrival.replaced = nameUnlessId(outcome.newPending->requestId);
        if (other) {
            m_write(denyLine(other->requestId, denial));
            other.reset();
        }
    }
    for (const QByteArray &deny : outcome.denyLines)
        m_write(deny);
    if (!outcome.newPending)
        return arrival;
    settle(outcome.newPending->requestId, now);
    own = outcome.newPending;
    arrival.kind = kind;
    return arrival;
}

PromptDesk::Arrival PromptDesk::permissionArrived(std::string_view line, bool interactive, bool remote,
                                                  const QDateTime &now)
{
    return arrived(controlRequestOutcome(line, interactive, remote, m_permission), m_permission, m_question,
                   QStringLiteral("권한 요청으로 대체됨"), Arrival::Kind::Permission, now);
}

PromptDesk::Arrival PromptDesk::questionArrived(std::string_view line, bool interactive, bool remote,
                                                const QDateTime &now)
{
    const auto outcome = questionRequestOutcome(line, interactive, remote, m_question);
    Arrival arrival = arrived(outcome, m_question, m_permission, QStringLiteral("질문 요청으로 대체됨"),
                              Arrival::Kind::Question, now);
    arrival.questionSkipped = !outcome.newPending && !interactive && !outcome.denyLines.isEmpty();
    return arrival;
}

std::optional<QString> PromptDesk::nameUnlessId(const QString &requestId) const
{
    if (isEmpty() || m_requestId == requestId)
        return std::nullopt;
    return m_permission ? m_permission->displayName : nameOf(*m_question);
}

void PromptDesk::settle(const QString &requestId, const QDateTime &now)
{
    if (m_requestId != requestId || !m_since.isValid())
        m_since = now;
    m_requestId = requestId;
}

std::optional<QString> PromptDesk::withdraw(const QString &requestId)
{
    if (isEmpty() || m_requestId != requestId)
        return std::nullopt;
    const QString name = m_permission ? m_permission->displayName : nameOf(*m_question);
    clear();
    return name;
}

std::optional<QString> PromptDesk::respondToPermission(PermissionChoice choice)
{
    if (!m_permission)
        return std::nullopt;
    const PermissionRequest request = *m_permission;
    const bool denied = choice == PermissionChoice::Deny;
    const auto decision = [&] {
        if (denied)
            return PermissionDecision::deny(QStringLiteral("사용자가 거부했습니다"));
        if (choice == PermissionChoice::Always)
            return PermissionDecision::allow(request.rawInputJSON, request.rawSuggestionsJSON);
        return PermissionDecision::allow(request.rawInputJSON);
    }();
    m_write(encodeControlResponse(request.requestId, decision));
    clear();
    if (request.remote)
        return remoteActivity();
    return denied ? QStringLiteral("거부 전달됨 — 계속 진행 중…") : QStringLiteral("승인됨 — 도구 실행 중…");
}

std::optional<QString> PromptDesk::respondToQuestion(const QList<QuestionAnswer> &answers)
{
    if (!m_question)
        return std::nullopt;
    const QuestionRequest request = *m_question;
    m_write(encodeControlResponse(request.requestId,
                                  PermissionDecision::allow(encodeQuestionUpdatedInput(request, answers))));
    clear();
    if (request.remote)
        return remoteActivity();
    return std::any_of(answers.cbegin(), answers.cend(), hasAnswer)
        ? QStringLiteral("답 전달됨 — 계속 진행 중…")
        : QStringLiteral("답 없이 진행 — 계속 진행 중…");
}

bool PromptDesk::clear()
{
    const bool was = !isEmpty();
    m_permission.reset();
    m_question.reset();
    m_requestId.clear();
    m_since = {};
    return was;
}

} // namespace Vesk
