#include "ui/chat/PromptGuard.h"

#include "sessions/ProjectChat.h"

namespace Vesk
{

void PromptGuard::follow(const QString &requestId, Clock::time_point now)
{
    const bool isAnother = !requestId.isEmpty() && requestId != m_requestId;
    const bool stoodBehind = !m_requestId.isEmpty() || now - pause < m_answeredAt;
    if (isAnother && stoodBehind)
        m_closedUntil = now + pause;
    m_requestId = requestId;
}

QString openPromptId(const ProjectChat &chat)
{
    if (const auto &permission = chat.pendingPermission())
        return permission->requestId;
    const auto &question = chat.pendingQuestion();
    return question ? question->requestId : QString();
}

} // namespace Vesk
