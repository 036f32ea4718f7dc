#include "ui/issues/IssueSession.h"

#include "sessions/ProjectChat.h"

#include <algorithm>

namespace Vesk
{

using namespace Qt::StringLiterals;

IssueSession IssueSession::of(const ProjectChat &chat)
{
    using Kind = SessionMarks::Kind;
    if (const auto &permission = chat.pendingPermission()) {
        const QString &tool =
            permission->displayName.isEmpty() ? permission->toolName : permission->displayName;
        return {Kind::WaitApproval, u"내 차례 · %1 승인 대기"_s.arg(tool), {}};
    }
    if (chat.pendingQuestion()) {
        return {Kind::WaitAnswer, u"내 차례 · 질문"_s, {}};
    }
    if (chat.isRunning()) {
        return {Kind::Running, chat.title(), chat.runStartedAt()};
    }
    const auto background = std::ranges::count(chat.backgroundTasks().tasks(),
                                               BackgroundTask::Status::Running, &BackgroundTask::status);
    return background > 0
        ? IssueSession {Kind::Background, chat.title() + u" · 배경 %1"_s.arg(background), {}}
        : IssueSession {Kind::Idle, chat.title(), {}};
}

std::optional<IssueSession> IssueSession::foremost(const QList<ProjectChat *> &chats)
{
    std::optional<IssueSession> best;
    for (const ProjectChat *chat : chats) {
        IssueSession session = of(*chat);
        if (!best || session.mark >= best->mark) {
            best = std::move(session);
        }
    }
    return best;
}

} // namespace Vesk
