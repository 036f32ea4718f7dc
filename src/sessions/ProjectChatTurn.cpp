// How a turn begins and ends.
#include "claude/StreamEncoder.h"
#include "core/UsageRecorder.h"
#include "sessions/AgentProcess.h"
#include "sessions/MessageText.h"
#include "sessions/ProjectChat.h"
#include "sessions/PromptDesk.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace Vesk
{

void ProjectChat::enqueue(const QString &text, bool remote, bool interactive, const QStringList &attachments)
{
    if (m_isRunning)
        return;
    const QList<ChatMessage> &rows = m_transcript.rows();
    const bool isFirst = std::none_of(rows.cbegin(), rows.cend(), [](const ChatMessage &row) {
        return row.role == ChatMessage::Role::User || row.role == ChatMessage::Role::Assistant;
    });
    if (isFirst)
        setTitle(text.isEmpty() && !attachments.isEmpty() ? QFileInfo(attachments.first()).fileName()
                                                          : titleFrom(text));
    // A turn that the kept child began by itself may still be open.
    finishStreaming();
    removeEmptyRunRows({});

    ChatMessage question;
    question.role = ChatMessage::Role::User;
    question.text = text;
    question.attachments = attachments;
    question.at = QDateTime::currentDateTimeUtc();
    m_transcript.append(std::move(question));
    const QUuid anchor = appendRow(ChatMessage::Role::Assistant, {}, true);
    m_turn = {};
    m_turn.turnAssistantID = anchor;
    m_turn.currentAssistantID = anchor;
    m_turn.runAssistantIDs = {anchor};
    m_turn.turnIsUserInitiated = true;
    beginRun();

    QString prompt = composePrompt(text, attachments);
    if (m_effort == AgentEffort::Ultracode)
        prompt.prepend(QStringLiteral("ultracode\n\n"));
    if (childIsRunning() && m_process->inputIsOpen() && remote == m_currentRunRemote
        && interactive == m_currentRunInteractive) {
        write(encodeUserMessage(prompt));
        return;
    }
    m_backgroundTasks.keepRestored();
    if (m_contextLive) {
        m_contextLive.reset();
        Q_EMIT outcomeChanged();
    }
    runProcess({prompt, remote, interactive, attachments});
}

void ProjectChat::beginRun()
{
    m_stoppedByUser = false;
    m_outcome = {};
    m_observation = {};
    m_runStartedAt = QDateTime::currentDateTimeUtc();
    setIsRunning(true);
    Q_EMIT runStartedAtChanged();
    Q_EMIT outcomeChanged();
    setCurrentActivity(QStringLiteral("시작 중…"));
}

bool ProjectChat::runHasText() const
{
    return std::any_of(m_turn.runAssistantIDs.cbegin(), m_turn.runAssistantIDs.cend(),
                       [this](const QUuid &id) {
                           const ChatMessage *row = m_transcript.find(id);
                           return row && !row->text.isEmpty();
                       });
}

void ProjectChat::removeEmptyRunRows(const QUuid &keptRow)
{
    for (const QUuid &id : std::as_const(m_turn.runAssistantIDs)) {
        const ChatMessage *row = m_transcript.find(id);
        if (row && row->text.isEmpty() && !row->isError && id != keptRow)
            m_transcript.remove(id);
    }
}

void ProjectChat::finishTurn(bool interrupted)
{
    m_ownTurnTimer.stop();
    finishStreaming();
    const bool owesAnswer = !runHasText() && m_turn.turnIsUserInitiated;
    removeEmptyRunRows(owesAnswer ? m_turn.turnAssistantID : QUuid());
    if (owesAnswer && m_outcome.error.isEmpty()) {
        m_transcript.setText(m_turn.turnAssistantID, QStringLiteral("(응답 없음)"));
        m_transcript.setError(m_turn.turnAssistantID, true);
    }
    // Background work keeps the child, so that it can finish and report.
    const bool keepsChild =
        !interrupted && m_currentRunInteractive && m_backgroundTasks.hasRunning() && m_process;
    m_turn = {};
    setIsRunning(false);
    setRunStartedAt({});
    setCurrentActivity({});
    // A kept child may still wait for the answer to a prompt of its background work.
    if (!keepsChild) {
        clearPrompts();
        closeStdin();
    }
    Q_EMIT outcomeChanged();
    fireRunFinishedIfPending();
    drainPendingLocalSendIfAny();
}

void ProjectChat::fail(const QUuid &rowId, const QString &text)
{
    flushPendingDeltas();
    m_deltaFlushTimer.stop();
    m_outcome.error = text;
    m_transcript.setText(rowId, text);
    m_transcript.setError(rowId, true);
    m_transcript.setStreaming(rowId, false);
    m_turn = {};
    setIsRunning(false);
    setRunStartedAt({});
    setCurrentActivity({});
    Q_EMIT outcomeChanged();
}

void ProjectChat::fireRunFinishedIfPending()
{
    if (const auto waiter = std::exchange(onRunFinished, nullptr))
        waiter(m_outcome.error.isEmpty() && !m_stoppedByUser);
}

void ProjectChat::clearPrompts()
{
    if (m_desk->clear())
        Q_EMIT pendingPromptChanged();
}

bool ProjectChat::softInterrupt()
{
    if (!canInterrupt())
        return false;
    m_turn.interruptedByUser = true;
    write(encodeInterruptRequest());
    setCurrentActivity(QStringLiteral("중단하는 중…"));
    return true;
}

void ProjectChat::stop()
{
    if (m_isRunning) {
        m_stoppedByUser = true;
        UsageRecorder::record(FeatureSignal::TurnInterrupted);
    }
    cancelPendingLocalSends();
    m_ownTurnTimer.stop();
    m_launch.reset();
    closeStdin();
    if (m_process) {
        m_process->terminate();
        retireChild();
    }
    m_backgroundTasks.failRunning(QDateTime::currentDateTimeUtc());
    finishStreaming();
    removeEmptyRunRows({});
    m_turn = {};
    setIsRunning(false);
    setRunStartedAt({});
    setCurrentActivity({});
    clearPrompts();
    Q_EMIT outcomeChanged();
    fireRunFinishedIfPending();
}

bool ProjectChat::terminateChild()
{
    bool any = false;
    for (AgentProcess *child : {m_process.get(), m_retiring.get()}) {
        if (!child || !child->isRunning())
            continue;
        child->terminate();
        any = true;
    }
    return any;
}

} // namespace Vesk
