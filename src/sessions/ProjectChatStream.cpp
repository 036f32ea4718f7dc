// What each line of the child does to its session.
#include "base/Text.h"
#include "claude/StreamEventKind.h"
#include "sessions/ProjectChat.h"
#include "sessions/PromptDesk.h"

#include <algorithm>
#include <iterator>

namespace Vesk
{

namespace
{

constexpr int notedDecodeFailures = 3;
constexpr int notedStderrLines = 20;
constexpr int notedResultErrors = 20;

QString thinking()
{
    return QStringLiteral("생각 중…");
}

QString retryActivity(const StreamLine &line)
{
    const QString base = QStringLiteral("다시 시도 중…");
    if (!line.attempt)
        return base;
    if (!line.maxRetries)
        return QStringLiteral("%1 (%2)").arg(base).arg(*line.attempt);
    return QStringLiteral("%1 (%2/%3)").arg(base).arg(*line.attempt).arg(*line.maxRetries);
}

QString toolActivityLine(const StreamContent &block)
{
    const QString name = block.name.value_or(QStringLiteral("도구"));
    return block.input.isObject() ? ToolActivity::summaryLine(name, block.input.toObject()) : name;
}

} // namespace

void ProjectChat::handleLine(std::string_view line, bool padded)
{
    ++m_observation.totalLines;
    const std::optional<StreamLine> decoded = m_decoder.decode(line, padded);
    if (!decoded) {
        noteStreamDecodeFailure(line);
        return;
    }
    switch (classify(*decoded)) {
    case StreamEventKind::ControlRequest:
        flushPendingDeltas();
        onControlRequest(line);
        break;
    case StreamEventKind::ControlCancel:
        onControlCancel(decoded->requestId.value_or(QString()));
        break;
    case StreamEventKind::Task:
        m_backgroundTasks.updateBackgroundTask(*decoded, QDateTime::currentDateTimeUtc());
        break;
    case StreamEventKind::Subagent:
        m_backgroundTasks.recordSubagentActivity(*decoded->parentToolUseId, *decoded);
        break;
    case StreamEventKind::Init:
        onInit(*decoded);
        break;
    case StreamEventKind::ThinkingTokens:
        setCurrentActivity(thinking());
        break;
    case StreamEventKind::ApiRetry:
        setCurrentActivity(retryActivity(*decoded));
        break;
    case StreamEventKind::StreamEvent:
        onStreamEvent(*decoded);
        break;
    case StreamEventKind::Assistant:
        onAssistant(*decoded);
        break;
    case StreamEventKind::User:
        onUser(*decoded);
        break;
    case StreamEventKind::Result:
        onResult(*decoded);
        break;
    case StreamEventKind::Unknown:
        noteUnknownStreamLine(decoded->type, decoded->subtype);
        break;
    case StreamEventKind::ControlResponse: // the answer to an interrupt, which the result line follows
    case StreamEventKind::RateLimit:
    case StreamEventKind::Status:
    case StreamEventKind::KnownSystem:
        break;
    }
}

void ProjectChat::onControlRequest(std::string_view line)
{
    const PromptDesk::Arrival arrival = m_desk->handleControlRequest(
        line, m_currentRunInteractive, m_currentRunRemote, QDateTime::currentDateTimeUtc());
    if (arrival.replaced) {
        appendSystemNote(
            QStringLiteral(
                "ℹ️ 새 요청이 와서 앞의 요청은 자동으로 거부되었습니다 — ")
            + *arrival.replaced);
    }
    if (arrival.questionSkipped) {
        appendSystemNote(QStringLiteral(
            "⚠️ 무인 실행 중 에이전트가 결정을 물었으나(AskUserQuestion) 답할 사람이 없어 자동으로 건너뛰었습니다 — 결정 질문이 잦은 일은 무인 반복보다 대화형 실행이 맞습니다."));
        if (onUnattendedQuestionSkip) {
            onUnattendedQuestionSkip(QStringLiteral(
                "무인 실행 중 결정 질문(AskUserQuestion) 자동 스킵 — 이 일이 무인 반복에 부적합할 수 있음"));
        }
    }
    switch (arrival.kind) {
    case PromptDesk::Arrival::Kind::Nothing:
        break;
    case PromptDesk::Arrival::Kind::Permission:
        setCurrentActivity(QStringLiteral("권한 승인 대기 중…"));
        Q_EMIT pendingPromptChanged();
        if (onPermissionWait)
            onPermissionWait(*m_desk->pendingPermission());
        break;
    case PromptDesk::Arrival::Kind::Question:
        setCurrentActivity(QStringLiteral("질문 답변 대기 중…"));
        Q_EMIT pendingPromptChanged();
        if (onQuestionWait)
            onQuestionWait(*m_desk->pendingQuestion());
        break;
    }
}

void ProjectChat::onControlCancel(const QString &requestId)
{
    const bool wasPermission = m_desk->pendingPermission().has_value();
    const auto name = m_desk->withdraw(requestId);
    if (!name)
        return;
    flushPendingDeltas();
    appendSystemNote(
        (wasPermission ? QStringLiteral("ℹ️ 에이전트가 권한 요청을 거둬들였습니다 — ")
                       : QStringLiteral("ℹ️ 에이전트가 질문을 거둬들였습니다 — "))
        + *name);
    if (!m_isRunning)
        setCurrentActivity({});
    else
        setCurrentActivity(m_turn.interruptedByUser ? QStringLiteral("중단하는 중…") : thinking());
    Q_EMIT pendingPromptChanged();
}

void ProjectChat::onInit(const StreamLine &line)
{
    m_spawned.inTurn = true;
    if (m_ownTurnTimer.isActive()) {
        m_ownTurnTimer.stop();
        m_turn.currentToolGroupID = {};
        rollAssistantSegment();
    }
    if (line.sessionId)
        m_sessionId = *line.sessionId;
    if (line.capabilities) {
        m_interruptAvailable = line.capabilities->contains(QStringLiteral("interrupt_receipt_v1"));
        Q_EMIT interruptAvailableChanged();
    }
    if (line.slashCommands) {
        QStringList commands = *line.slashCommands;
        commands.removeDuplicates();
        if (m_slashCommands != commands) {
            m_slashCommands = commands;
            Q_EMIT slashCommandsChanged();
        }
    }
    noteIfCLIRefusedOurPermissionMode(line.permissionMode);
}

void ProjectChat::noteIfCLIRefusedOurPermissionMode(const std::optional<QString> &reported)
{
    if (!reported || !m_spawnedPermissionMode || *reported == word(*m_spawnedPermissionMode)
        || m_didNotePermissionModeRefusal)
        return;
    m_didNotePermissionModeRefusal = true;
    const auto mode = permissionModeFromWord(*reported);
    appendSystemNote(
        QStringLiteral(
            "ℹ️ Claude가 %1 권한 모드를 안 받았습니다 — 이 세션은 %2로 돕니다.")
            .arg(label(*m_spawnedPermissionMode), mode ? label(*mode) : *reported));
}

void ProjectChat::onStreamEvent(const StreamLine &line)
{
    if (!line.event || line.event->type != u"content_block_delta" || !line.event->delta)
        return;
    const StreamDelta &delta = *line.event->delta;
    if (delta.type == u"text_delta" && delta.text)
        bufferStreamingText(*delta.text, activeSegmentID());
    else if (delta.type == u"thinking_delta")
        setCurrentActivity(thinking());
}

void ProjectChat::onAssistant(const StreamLine &line)
{
    flushPendingDeltas();
    if (!line.message)
        return;
    const auto context = noteContextUsage(m_contextLive, line.message->usage, line.message->model);
    if (context != m_contextLive) {
        m_contextLive = context;
        Q_EMIT outcomeChanged();
    }
    // Text comes in deltas and in the result; what counts here are the tool calls.
    QList<StreamContent> toolUses;
    std::copy_if(line.message->content.cbegin(), line.message->content.cend(), std::back_inserter(toolUses),
                 [](const StreamContent &block) { return block.type == u"tool_use"; });
    if (toolUses.isEmpty())
        return;
    const QDateTime now = QDateTime::currentDateTimeUtc();
    for (const StreamContent &block : std::as_const(toolUses)) {
        setCurrentActivity(toolActivityLine(block));
        m_backgroundTasks.registerSubagentIfNeeded(block, now);
    }
    recordToolUses(toolUses);
    rollAssistantSegment();
}

void ProjectChat::onUser(const StreamLine &line)
{
    if (!line.message)
        return;
    m_backgroundTasks.finalizeSubagentsFromToolResults(line.message->content,
                                                       QDateTime::currentDateTimeUtc());
    recordToolResults(line.message->content);
    setCurrentActivity(thinking());
}

void ProjectChat::onResult(const StreamLine &line)
{
    m_conversationIsKept = true;
    m_spawned.inTurn = false;
    flushPendingDeltas();
    const QString text = line.result.value_or(QString());
    const bool interruptedByUser = m_turn.interruptedByUser;
    // A message that came while the child was in a turn of its own has its turn, or is a part of that one.
    const bool endsAnotherTurn =
        line.isOfBackgroundWork && !line.isError && m_isRunning && m_turn.turnIsUserInitiated;
    const QUuid openRow =
        m_turn.currentAssistantID.isNull() ? m_turn.turnAssistantID : m_turn.currentAssistantID;
    if (interruptedByUser && line.isError) {
        m_backgroundTasks.stopForeground(QDateTime::currentDateTimeUtc()); // their results will not come
        const ChatMessage *row = m_transcript.find(openRow);
        if (row && row->text.isEmpty())
            m_transcript.setText(openRow, QStringLiteral("(중단됨)"));
    } else if (!text.isEmpty() && !endsAnotherTurn) {
        const QUuid segment = activeSegmentID();
        m_transcript.setText(segment, text);
        if (line.isError)
            m_transcript.setError(segment, true);
    } else if (line.isError) {
        m_transcript.setError(openRow, true);
    }
    if (line.isError && !interruptedByUser) {
        m_outcome.hadErrorResult = true;
        m_outcome.errorSubtype = line.subtype.value_or(QString());
        noteResultErrors(line.errors);
    }
    if (line.totalCostUsd)
        m_outcome.costUSD = line.totalCostUsd;
    if (line.modelUsage) {
        m_outcome.tokens = SessionTokenUsage::make(*line.modelUsage);
        m_contextLive = noteContextWindows(m_contextLive, *line.modelUsage);
    }
    m_outcome.deniedTools.clear();
    for (const QString &tool : line.permissionDenials.value_or(QStringList()))
        m_outcome.deniedTools << (tool.isEmpty() ? QStringLiteral("도구") : tool);
    if (!line.isError && !text.isEmpty() && onAssistantComplete)
        onAssistantComplete(text);
    if (endsAnotherTurn)
        m_ownTurnTimer.start();
    else
        finishTurn(false);
}

void ProjectChat::noteResultErrors(const QStringList &errors)
{
    for (const QString &error : errors) {
        const int count = ++m_observation.resultErrors;
        if (count <= notedResultErrors) {
            streamNote(QStringLiteral("claude result: ") + StreamObservation::rawPreview(error));
        } else if (count == notedResultErrors + 1) {
            streamNote(QStringLiteral("claude result 오류가 %1건을 넘었습니다 — 이후로는 개수만 셉니다")
                           .arg(notedResultErrors));
        }
    }
}

void ProjectChat::noteStreamDecodeFailure(std::string_view line)
{
    const int failures = ++m_observation.decodeFailures;
    if (failures <= notedDecodeFailures) {
        streamNote(QStringLiteral("스트림 디코드 실패 #%1: ").arg(failures)
                   + StreamObservation::rawPreview(line));
    } else if (failures == notedDecodeFailures + 1) {
        streamNote(QStringLiteral("스트림 디코드 실패가 %1건을 넘었습니다 — 이후로는 원문 없이 개수만 셉니다")
                       .arg(notedDecodeFailures));
    }
    warnAboutStreamDropsOnce();
}

void ProjectChat::noteUnknownStreamLine(const QString &type, const std::optional<QString> &subtype)
{
    const QString name = StreamObservation::name(type, subtype);
    if (m_observation.noteUnknown(name))
        streamNote(QStringLiteral("모르는 스트림 이벤트 ") + name);
    warnAboutStreamDropsOnce();
}

void ProjectChat::warnAboutStreamDropsOnce()
{
    if (m_didWarnAboutStreamDrops)
        return;
    const auto warning = m_observation.warningLine();
    if (!warning)
        return;
    m_didWarnAboutStreamDrops = true;
    appendSystemNote(*warning);
    streamNote(*warning);
    Q_EMIT outcomeChanged();
}

void ProjectChat::handleStderrLine(const QString &line)
{
    const QString trimmed = Text::trimWhitespace(line);
    if (trimmed.isEmpty())
        return;
    const int lines = ++m_observation.stderrLines;
    if (lines <= notedStderrLines) {
        streamNote(QStringLiteral("claude stderr: ") + StreamObservation::rawPreview(trimmed));
    } else if (lines == notedStderrLines + 1) {
        streamNote(QStringLiteral("claude stderr가 %1줄을 넘었습니다 — 이후로는 내용 없이 개수만 셉니다")
                       .arg(notedStderrLines));
    }
    if (!m_isRunning)
        Q_EMIT outcomeChanged(); // the footer of the run is already drawn
}

} // namespace Vesk
