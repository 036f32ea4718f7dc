#include "ui/chat/RunStatus.h"

#include "sessions/ProjectChat.h"

#include <algorithm>

namespace Vesk
{

RunStatus::RunStatus(QObject *parent)
    : QObject(parent)
{
}

void RunStatus::setChat(ProjectChat *chat)
{
    if (m_chat) {
        disconnect(m_chat, nullptr, this, nullptr);
        disconnect(&m_chat->backgroundTasks(), nullptr, this, nullptr);
    }
    m_chat = chat;
    if (m_chat) {
        connect(m_chat, &ProjectChat::isRunningChanged, this, &RunStatus::changed);
        connect(m_chat, &ProjectChat::currentActivityChanged, this, &RunStatus::changed);
        connect(m_chat, &ProjectChat::runStartedAtChanged, this, &RunStatus::changed);
        connect(m_chat, &ProjectChat::interruptAvailableChanged, this, &RunStatus::changed);
        connect(m_chat, &ProjectChat::pendingPromptChanged, this, &RunStatus::changed);
        connect(m_chat, &ProjectChat::permissionModeChanged, this, &RunStatus::changed);
        connect(&m_chat->backgroundTasks(), &BackgroundTasks::tasksChanged, this, &RunStatus::changed);
    }
    Q_EMIT changed();
}

bool RunStatus::isRunning() const
{
    return m_chat && m_chat->isRunning();
}

bool RunStatus::waitsForApproval() const
{
    return m_chat && m_chat->pendingPermission();
}

bool RunStatus::waitsForAnswer() const
{
    return m_chat && m_chat->pendingQuestion();
}

QString RunStatus::activity() const
{
    if (!isRunning()) {
        return {};
    }
    // The session has no word of its own while the answer's text streams in.
    return m_chat->currentActivity().isEmpty() ? QStringLiteral("응답 작성 중…") : m_chat->currentActivity();
}

QDateTime RunStatus::startedAt() const
{
    return m_chat ? m_chat->runStartedAt() : QDateTime();
}

bool RunStatus::canInterrupt() const
{
    return m_chat && m_chat->canInterrupt();
}

QString RunStatus::hint() const
{
    if (!canInterrupt()) {
        return {};
    }
    const auto interrupt = QStringLiteral("ESC: 지금 사고를 멈추고 방향을 바꿉니다(세션 유지)");
    return waitsForApproval() || waitsForAnswer()
        ? interrupt
        : interrupt + QStringLiteral(" · 컴포저의 Stop 버튼: 세션 전체 종료");
}

int RunStatus::backgroundCount() const
{
    if (!m_chat) {
        return 0;
    }
    const auto &tasks = m_chat->backgroundTasks().tasks();
    return static_cast<int>(std::count_if(tasks.begin(), tasks.end(), [](const auto &task) {
        return task.status == BackgroundTask::Status::Running;
    }));
}

QString RunStatus::backgroundText() const
{
    return QStringLiteral("백그라운드 작업 진행 중 %1").arg(backgroundCount());
}

QString RunStatus::backgroundStopHelp() const
{
    auto help = QStringLiteral("배경 작업 중단 — 진행 중인 워크플로우를 포함해 세션 프로세스를 종료");
    if (m_chat && m_chat->stalePermissionMode()) {
        help += QStringLiteral(". 중단하면 다음 메시지부터 바꾼 권한 모드가 적용됩니다");
    }
    return help;
}

void RunStatus::softInterrupt()
{
    if (m_chat) {
        m_chat->softInterrupt();
    }
}

void RunStatus::stop()
{
    if (m_chat) {
        m_chat->stop();
    }
}

} // namespace Vesk
