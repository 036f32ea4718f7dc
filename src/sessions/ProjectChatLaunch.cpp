// The child of a session: from the program's path to its end.
#include "claude/ClaudeCLI.h"
#include "claude/LaunchArguments.h"
#include "claude/StreamEncoder.h"
#include "sessions/AgentProcess.h"
#include "sessions/ProjectChat.h"

#include <utility>

namespace Vesk
{

namespace
{

constexpr int retireLimitMs = 3000;  // for a child to go by itself
constexpr int killedByThenMs = 1000; // after the grace of one that was asked to go

} // namespace

void ProjectChat::runProcess(Launch launch)
{
    retireChild();
    m_launch = std::move(launch);
    continueLaunch();
}

void ProjectChat::continueLaunch()
{
    if (!m_launch)
        return;
    if (m_services.locator && !m_services.locator->isResolved()) {
        m_services.locator->whenResolved(this, [this](const QString &) { continueLaunch(); });
        return;
    }
    // Two children on one conversation would fork its transcript: the one before has a moment to be gone.
    if (m_retiring)
        return;
    const Launch launch = *std::exchange(m_launch, std::nullopt);
    const QString program = m_services.locator ? m_services.locator->path() : QString();
    if (program.isEmpty()) {
        fail(m_turn.turnAssistantID, ClaudeCLI::notInstalledMessage());
        fireRunFinishedIfPending();
        return;
    }
    spawn(launch, program);
}

void ProjectChat::spawn(const Launch &launch, const QString &program)
{
    m_currentRunInteractive = launch.interactive;
    m_currentRunRemote = launch.remote;
    const AgentPermissionMode mode = effectiveMode(m_permissionMode, launch.remote);
    const AnswerLanguage language =
        m_services.answerLanguage ? m_services.answerLanguage() : AnswerLanguage::Auto;
    LaunchOptions options;
    options.cwd = m_cwd;
    options.model = m_model;
    options.permissionMode = m_permissionMode;
    options.effort = m_effort;
    options.sessionId = m_sessionId;

    m_spawned = {launch, !m_sessionId.isEmpty(), false, false};
    m_process = std::make_unique<AgentProcess>();
    AgentProcess *child = m_process.get();
    // A child that is no longer the session's own has nothing to say to it.
    child->onStarted = [this, child, mode, prompt = launch.prompt] {
        if (child != m_process.get())
            return;
        setSpawnedPermissionMode(mode);
        m_didNotePermissionModeRefusal = false;
        write(encodeUserMessage(prompt));
        Q_EMIT interruptAvailableChanged();
    };
    child->onLine = [this, child](std::string_view line) {
        if (child != m_process.get())
            return;
        m_spawned.spoke = true;
        handleLine(line, true);
    };
    child->onErrorLine = [this, child](const QString &line) {
        if (child == m_process.get())
            handleStderrLine(line);
    };
    child->onEnded = [this, child](const AgentEnd &end) {
        if (child == m_process.get()) {
            childEnded(end);
        } else if (child == m_retiring.get()) {
            retiredChildEnded();
        }
    };
    child->start({program,
                  buildArgs(options, launch.remote, launch.attachments, language, launch.interactive),
                  buildEnvironment(QProcessEnvironment::systemEnvironment(), m_resolvedEnv), m_cwd});
}

void ProjectChat::childEnded(const AgentEnd &end)
{
    const bool failedToStart = end.kind == AgentEnd::Kind::FailedToStart;
    const bool beginsAnew = foundNoConversation(end);
    const QString reason = end.reason;
    m_process.reset();
    closeStdin();
    m_backgroundTasks.failRunning(QDateTime::currentDateTimeUtc());
    clearPrompts();
    if (beginsAnew) {
        m_sessionId.clear();
        appendSystemNote(QStringLiteral(
            "ℹ️ 앞 턴이 에이전트의 기록에 남지 않아 이어갈 수 없습니다 — 새 대화로 시작합니다."));
        runProcess(m_spawned.launch);
    } else if (failedToStart) {
        fail(m_turn.turnAssistantID, QStringLiteral("claude 실행 실패: ") + reason);
        fireRunFinishedIfPending();
    } else if (m_isRunning || !m_turn.turnAssistantID.isNull()) {
        finishTurn(true);
    }
    Q_EMIT interruptAvailableChanged();
}

// Of a conversation that was stopped in its first turn the agent may have kept nothing. Asked to go on with
// it, it ends at once, and the message that it was to answer has been read by nobody.
bool ProjectChat::foundNoConversation(const AgentEnd &end) const
{
    return end.kind == AgentEnd::Kind::Exited && end.code != 0 && m_spawned.resumes && !m_spawned.spoke
        && !m_conversationIsKept && m_isRunning && !m_turn.interruptedByUser;
}

void ProjectChat::retireChild()
{
    if (!m_process)
        return;
    m_process->closeInput();
    m_retiring = std::move(m_process);
    m_askedRetiring = false;
    m_retireTimer.start(retireLimitMs);
    setSpawnedPermissionMode(std::nullopt);
    Q_EMIT interruptAvailableChanged();
}

// A child that hangs on its way out would stay for good, and might still write to the conversation that the
// next one takes up. One that still answers a message may end what it does.
void ProjectChat::onRetireLimit()
{
    if (!m_retiring || m_spawned.inTurn || std::exchange(m_askedRetiring, true)) {
        retiredChildEnded();
        return;
    }
    m_retiring->terminate();
    m_retireTimer.start(AgentProcess::killGraceMs + killedByThenMs);
}

void ProjectChat::retiredChildEnded()
{
    m_retireTimer.stop();
    m_retiring.reset();
    continueLaunch();
}

void ProjectChat::closeStdin()
{
    if (m_process)
        m_process->closeInput();
    setSpawnedPermissionMode(std::nullopt);
}

void ProjectChat::write(const QByteArray &line)
{
    if (m_process)
        m_process->writeLine(line);
}

} // namespace Vesk
