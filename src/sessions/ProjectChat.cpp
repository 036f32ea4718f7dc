#include "sessions/ProjectChat.h"

#include "base/Text.h"
#include "claude/ClaudeSettings.h"
#include "core/KeepAwakeController.h"
#include "core/UsageRecorder.h"
#include "sessions/AgentProcess.h"
#include "sessions/IssueRecommendedRun.h"
#include "sessions/PromptDesk.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace Vesk
{

namespace
{

constexpr int deltaFlushMs = 50;
constexpr int ownTurnLimitMs = 3000;

QString expandedPath(const QString &path, const QString &folder)
{
    QString expanded = path;
    if (expanded == u"~" || expanded.startsWith(u"~/"))
        expanded.replace(0, 1, QDir::homePath());
    return QDir::cleanPath(QDir(folder).absoluteFilePath(expanded));
}

/** `what` ends in a blank: the value stands behind it, or the word for a value. */
QString unreadNote(const QString &what, const QString &value, const QString &instead)
{
    return QStringLiteral("ℹ️ ") + what + (value.isEmpty() ? QStringLiteral("값") : value)
        + QStringLiteral("을 못 읽었습니다 — 이 세션은 ") + instead
        + QStringLiteral("로 시작합니다(피커에서 바꿀 수 있어요).");
}

} // namespace

ProjectChat::ProjectChat(QUuid id, QString alias, QString cwd, QString title,
                         QHash<QString, QString> resolvedEnv, SessionServices services, QObject *parent)
    : QObject(parent)
    , m_id(id)
    , m_alias(std::move(alias))
    , m_cwd(std::move(cwd))
    , m_title(std::move(title))
    , m_resolvedEnv(std::move(resolvedEnv))
    , m_services(std::move(services))
    , m_desk(std::make_unique<PromptDesk>([this](const QByteArray &line) { write(line); }))
{
    m_deltaFlushTimer.setSingleShot(true);
    m_deltaFlushTimer.setInterval(deltaFlushMs);
    connect(&m_deltaFlushTimer, &QTimer::timeout, this, &ProjectChat::flushPendingDeltas);
    m_ownTurnTimer.setSingleShot(true);
    m_ownTurnTimer.setInterval(ownTurnLimitMs);
    connect(&m_ownTurnTimer, &QTimer::timeout, this, [this] { finishTurn(false); });
    m_retireTimer.setSingleShot(true);
    connect(&m_retireTimer, &QTimer::timeout, this, &ProjectChat::onRetireLimit);
}

ProjectChat::~ProjectChat()
{
    terminateChild();
    if (m_isRunning && m_services.keepAwake)
        m_services.keepAwake->noteRunEnded();
}

void ProjectChat::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    Q_EMIT titleChanged();
}

void ProjectChat::seedResume(const QString &sessionId, QList<ChatMessage> messages,
                             QList<BackgroundTask> backgroundTasks)
{
    m_sessionId = sessionId;
    m_resumedSessionId = sessionId;
    m_conversationIsKept = true;
    m_transcript.reset(std::move(messages));
    if (!backgroundTasks.isEmpty())
        m_backgroundTasks.reset(std::move(backgroundTasks));
}

void ProjectChat::seedHistory(QList<ChatMessage> messages, QList<BackgroundTask> backgroundTasks)
{
    if (!messages.isEmpty()) {
        messages.append(m_transcript.rows());
        m_transcript.reset(std::move(messages));
    }
    if (!backgroundTasks.isEmpty() && m_backgroundTasks.tasks().isEmpty())
        m_backgroundTasks.reset(std::move(backgroundTasks));
}

void ProjectChat::seedRestoredContext(const std::optional<ContextLive> &live)
{
    m_contextLive = live;
    Q_EMIT outcomeChanged();
}

void ProjectChat::setModel(ClaudeModel model)
{
    if (m_model == model)
        return;
    m_model = model;
    Q_EMIT modelChanged();
}

void ProjectChat::setPermissionMode(AgentPermissionMode mode)
{
    if (m_permissionMode == mode)
        return;
    m_permissionMode = mode;
    Q_EMIT permissionModeChanged();
}

void ProjectChat::setEffort(AgentEffort effort)
{
    if (m_effort == effort)
        return;
    m_effort = effort;
    Q_EMIT effortChanged();
}

void ProjectChat::setComposerInput(const QString &text)
{
    if (m_composerInput == text)
        return;
    m_composerInput = text;
    m_composerCaret = text.size();
    Q_EMIT composerInputChanged();
}

void ProjectChat::setComposerCaret(qsizetype caret)
{
    m_composerCaret = qBound(qsizetype(0), caret, m_composerInput.size());
}

void ProjectChat::restoreComposerDraft(const ComposerDraft &draft)
{
    QStringList there;
    std::copy_if(draft.attachments.cbegin(), draft.attachments.cend(), std::back_inserter(there),
                 [](const QString &path) { return QFileInfo::exists(path); });
    if (m_attachments != there) {
        m_attachments = there;
        Q_EMIT attachmentsChanged();
    }
    if (m_composerInput != draft.text) {
        m_composerInput = draft.text;
        setComposerCaret(draft.caret);
        Q_EMIT composerInputChanged();
    }
}

void ProjectChat::setCurrentActivity(const QString &activity)
{
    if (m_currentActivity == activity)
        return;
    m_currentActivity = activity;
    Q_EMIT currentActivityChanged();
}

void ProjectChat::setRunStartedAt(const QDateTime &at)
{
    if (m_runStartedAt == at)
        return;
    m_runStartedAt = at;
    Q_EMIT runStartedAtChanged();
}

void ProjectChat::setSpawnedPermissionMode(std::optional<AgentPermissionMode> mode)
{
    if (m_spawnedPermissionMode == mode)
        return;
    m_spawnedPermissionMode = mode;
    Q_EMIT permissionModeChanged();
}

void ProjectChat::setIsRunning(bool running)
{
    if (m_isRunning == running)
        return;
    m_isRunning = running;
    if (m_services.keepAwake) {
        if (running)
            m_services.keepAwake->noteRunStarted();
        else
            m_services.keepAwake->noteRunEnded();
    }
    Q_EMIT isRunningChanged();
    Q_EMIT interruptAvailableChanged();
    if (!running) {
        ++m_composerFocusToken;
        Q_EMIT composerFocusTokenChanged();
    }
}

const std::optional<PermissionRequest> &ProjectChat::pendingPermission() const
{
    return m_desk->pendingPermission();
}

const std::optional<QuestionRequest> &ProjectChat::pendingQuestion() const
{
    return m_desk->pendingQuestion();
}

QDateTime ProjectChat::promptSince() const
{
    return m_desk->since();
}

bool ProjectChat::childIsRunning() const
{
    return m_process && m_process->isRunning();
}

bool ProjectChat::canInterrupt() const
{
    return m_isRunning && m_interruptAvailable && childIsRunning() && m_process->inputIsOpen()
        && m_currentRunInteractive && !m_currentRunRemote;
}

std::optional<AgentPermissionMode> ProjectChat::stalePermissionMode() const
{
    if (m_spawnedPermissionMode && *m_spawnedPermissionMode != m_permissionMode && m_currentRunInteractive
        && !m_currentRunRemote)
        return m_spawnedPermissionMode;
    return std::nullopt;
}

QString ProjectChat::deniedToolTally() const
{
    QMap<QString, int> counts;
    for (const QString &tool : m_outcome.deniedTools)
        ++counts[tool];
    std::vector<std::pair<QString, int>> byCount(counts.constKeyValueBegin(), counts.constKeyValueEnd());
    std::stable_sort(byCount.begin(), byCount.end(),
                     [](const auto &a, const auto &b) { return a.second > b.second; });
    QStringList entries;
    for (const auto &[tool, count] : byCount)
        entries << tool + u' ' + QString::number(count);
    return entries.join(QStringLiteral(" · "));
}

void ProjectChat::send(const QString &text)
{
    const QString trimmed = Text::trimWhitespace(text);
    if (trimmed.isEmpty() && m_attachments.isEmpty())
        return;
    UsageRecorder::record(FeatureSignal::MessageSent);
    setComposerInput({});
    const QStringList attached = std::exchange(m_attachments, {});
    if (!attached.isEmpty())
        Q_EMIT attachmentsChanged();
    if (m_isRunning) {
        m_pendingLocalSends.append({QUuid::createUuid(), trimmed, attached});
        Q_EMIT pendingLocalSendsChanged();
        return;
    }
    enqueue(trimmed, false, true, attached);
}

void ProjectChat::sendProgrammatic(const QString &text)
{
    const QString trimmed = Text::trimWhitespace(text);
    if (!trimmed.isEmpty())
        enqueue(trimmed, false, false, {});
}

void ProjectChat::sendPanelAction(const QString &text)
{
    const QString trimmed = Text::trimWhitespace(text);
    if (trimmed.isEmpty() || m_isRunning)
        return;
    UsageRecorder::record(FeatureSignal::VersionActionUsed);
    enqueue(trimmed, false, true, {});
}

void ProjectChat::drainPendingLocalSendIfAny()
{
    if (m_isRunning || m_stoppedByUser || m_pendingLocalSends.isEmpty())
        return;
    const QueuedLocalSend next = m_pendingLocalSends.takeFirst();
    Q_EMIT pendingLocalSendsChanged();
    enqueue(next.text, false, true, next.attachments);
}

void ProjectChat::cancelPendingLocalSends()
{
    if (m_pendingLocalSends.isEmpty())
        return;
    m_pendingLocalSends.clear();
    Q_EMIT pendingLocalSendsChanged();
}

std::optional<QueuedLocalSend> ProjectChat::takePendingLocalSend(const QUuid &id)
{
    const auto found = std::find_if(m_pendingLocalSends.cbegin(), m_pendingLocalSends.cend(),
                                    [&](const QueuedLocalSend &queued) { return queued.id == id; });
    if (found == m_pendingLocalSends.cend())
        return std::nullopt;
    QueuedLocalSend taken = *found;
    m_pendingLocalSends.erase(found);
    Q_EMIT pendingLocalSendsChanged();
    return taken;
}

void ProjectChat::respondToPermission(PermissionChoice choice)
{
    const auto activity = m_desk->respondToPermission(choice);
    if (!activity)
        return;
    UsageRecorder::record(choice == PermissionChoice::Deny ? FeatureSignal::PermissionDenied
                                                           : FeatureSignal::PermissionApproved);
    setCurrentActivity(*activity);
    Q_EMIT pendingPromptChanged();
}

void ProjectChat::respondToQuestion(const QList<QuestionAnswer> &answers)
{
    const auto activity = m_desk->respondToQuestion(answers);
    if (!activity)
        return;
    setCurrentActivity(*activity);
    Q_EMIT pendingPromptChanged();
}

void ProjectChat::appendSystemNote(const QString &text)
{
    appendRow(ChatMessage::Role::Activity, text, false);
    m_turn.currentToolGroupID = {};
}

void ProjectChat::applyProjectDefaults(const ClaudeProjectSettings &settings)
{
    if (settings.model)
        setModel(*settings.model);
    if (settings.permissionMode)
        setPermissionMode(*settings.permissionMode);
    if (settings.effort)
        setEffort(*settings.effort);
    if (!settings.unknownMode)
        return;
    appendSystemNote(unreadNote(QStringLiteral("프로젝트 설정의 권한 모드 "),
                                settings.unknownMode->text.value_or(QString()), label(m_permissionMode)));
}

void ProjectChat::applyIssueRecommendation(const IssueRecommendedRun &run)
{
    if (run.model)
        setModel(*run.model);
    if (run.effort)
        setEffort(*run.effort);
    if (run.unknownModel)
        appendSystemNote(
            unreadNote(QStringLiteral("이슈의 추천 모델 "), run.unknownModel->text, label(m_model)));
    if (run.unknownEffort)
        appendSystemNote(
            unreadNote(QStringLiteral("이슈의 추천 Effort "), run.unknownEffort->text, label(m_effort)));
}

bool ProjectChat::addAttachment(const QString &path)
{
    UsageRecorder::record(FeatureSignal::ComposerAttachmentAdded);
    const QString file = expandedPath(path, m_cwd);
    // Each path becomes a rule in a list that commas separate.
    if (file.contains(u',') || file.contains(u'\n'))
        return false;
    const QFileInfo info(file);
    if (!info.exists() || info.isDir())
        return false;
    if (!m_attachments.contains(file)) {
        m_attachments.append(file);
        Q_EMIT attachmentsChanged();
    }
    return true;
}

void ProjectChat::removeAttachment(const QString &path)
{
    if (m_attachments.removeAll(path) > 0)
        Q_EMIT attachmentsChanged();
}

void ProjectChat::streamNote(const QString &line)
{
    if (onStreamNote)
        onStreamNote(u'[' + m_alias + QStringLiteral("] ") + line);
}

} // namespace Vesk
