// One agent session: its transcript, the turn in flight and at most one child.
#pragma once

#include "claude/AgentOptions.h"
#include "claude/PromptRequests.h"
#include "claude/StreamLine.h"
#include "core/AnswerLanguage.h"
#include "sessions/BackgroundTasks.h"
#include "sessions/ComposerDraft.h"
#include "sessions/SessionUsage.h"
#include "sessions/StreamObservation.h"
#include "sessions/Transcript.h"
#include "sessions/TurnState.h"

#include <QDateTime>
#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace Vesk
{

class AgentProcess;
struct AgentEnd;
class ExecutableLocator;
class KeepAwakeController;
class PromptDesk;
struct ClaudeProjectSettings;
struct IssueRecommendedRun;

/** What a session needs from the program around it. */
struct SessionServices {
    ExecutableLocator *locator = nullptr;
    KeepAwakeController *keepAwake = nullptr;
    std::function<AnswerLanguage()> answerLanguage {}; ///< asked at every launch
    QString cachesDir {};                              ///< pasted pictures are kept below
};

/** A message that was sent while a turn ran, and waits for its end. */
struct QueuedLocalSend {
    QUuid id;
    QString text;
    QStringList attachments;
};

/**
 * One agent session, confined to the main thread.
 *
 * A turn begins with enqueue() and ends with a `result` line, stop(), or the death of the child. Every end of
 * a turn passes finishTurn(), fail() or stop(), and nowhere else is the state of a turn cleared.
 */
class ProjectChat : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString alias READ alias CONSTANT)
    Q_PROPERTY(QString cwd READ cwd CONSTANT)
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged)
    Q_PROPERTY(int composerFocusToken READ composerFocusToken NOTIFY composerFocusTokenChanged)
    Q_PROPERTY(Vesk::ClaudeModel model READ model WRITE setModel NOTIFY modelChanged)
    Q_PROPERTY(Vesk::AgentPermissionMode permissionMode READ permissionMode WRITE setPermissionMode NOTIFY
                   permissionModeChanged)
    Q_PROPERTY(Vesk::AgentEffort effort READ effort WRITE setEffort NOTIFY effortChanged)
    Q_PROPERTY(QString composerInput READ composerInput WRITE setComposerInput NOTIFY composerInputChanged)
    Q_PROPERTY(QStringList attachments READ attachments NOTIFY attachmentsChanged)
    Q_PROPERTY(QString currentActivity READ currentActivity NOTIFY currentActivityChanged)
    Q_PROPERTY(QDateTime runStartedAt READ runStartedAt NOTIFY runStartedAtChanged)
    Q_PROPERTY(bool interruptAvailable READ interruptAvailable NOTIFY interruptAvailableChanged)
    Q_PROPERTY(bool canInterrupt READ canInterrupt NOTIFY interruptAvailableChanged)
    Q_PROPERTY(QStringList slashCommands READ slashCommands NOTIFY slashCommandsChanged)

public:
    ProjectChat(QUuid id, QString alias, QString cwd, QString title, QHash<QString, QString> resolvedEnv,
                SessionServices services, QObject *parent = nullptr);
    ~ProjectChat() override;

    // Who hears of what happens; each optional, set by the owner of the session.
    std::function<void(const QString &text)> onAssistantComplete; ///< a result without error and with text
    std::function<void(const PermissionRequest &)> onPermissionWait;
    std::function<void(const QuestionRequest &)> onQuestionWait;
    std::function<void(const QString &)> onUnattendedQuestionSkip;
    std::function<void(bool success)> onRunFinished;       ///< called once per setting, at the end of the run
    std::function<void(const QString &line)> onStreamNote; ///< a line for the audit log
    /** A link to this file was followed; true when the program shows the file itself. An empty `realPath`
        says that nothing is there: true when it would have been. */
    std::function<bool(const QString &path, const QString &realPath)> onFileLink;

    // Identity.
    [[nodiscard]] QUuid id() const { return m_id; }
    [[nodiscard]] const QString &alias() const { return m_alias; }
    [[nodiscard]] const QString &cwd() const { return m_cwd; }
    [[nodiscard]] const QHash<QString, QString> &resolvedEnv() const { return m_resolvedEnv; }

    // Published.
    [[nodiscard]] const QString &title() const { return m_title; }
    void setTitle(const QString &title);
    [[nodiscard]] Transcript &messages() { return m_transcript; }
    [[nodiscard]] const Transcript &messages() const { return m_transcript; }
    [[nodiscard]] bool isRunning() const { return m_isRunning; }
    [[nodiscard]] int composerFocusToken() const { return m_composerFocusToken; }
    [[nodiscard]] ClaudeModel model() const { return m_model; }
    void setModel(ClaudeModel model);
    [[nodiscard]] AgentPermissionMode permissionMode() const { return m_permissionMode; }
    void setPermissionMode(AgentPermissionMode mode);
    [[nodiscard]] std::optional<AgentPermissionMode> spawnedPermissionMode() const
    {
        return m_spawnedPermissionMode;
    }
    [[nodiscard]] AgentEffort effort() const { return m_effort; }
    void setEffort(AgentEffort effort);
    [[nodiscard]] const QString &composerInput() const { return m_composerInput; }
    void setComposerInput(const QString &text);                               ///< the caret goes to its end
    [[nodiscard]] qsizetype composerCaret() const { return m_composerCaret; } ///< in UTF-16 units
    void setComposerCaret(qsizetype caret);
    [[nodiscard]] ComposerDraft composerDraft() const
    {
        return {m_composerInput, m_composerCaret, m_attachments};
    }
    /** Puts a draft of an earlier time into the composer; attachments that are gone are left out. */
    void restoreComposerDraft(const ComposerDraft &draft);
    [[nodiscard]] const QStringList &attachments() const { return m_attachments; }
    [[nodiscard]] const QString &cachesDir() const { return m_services.cachesDir; }
    [[nodiscard]] const std::optional<PermissionRequest> &pendingPermission() const;
    [[nodiscard]] const std::optional<QuestionRequest> &pendingQuestion() const;
    [[nodiscard]] QDateTime promptSince() const; ///< when the open prompt came; invalid without one
    [[nodiscard]] const QString &currentActivity() const { return m_currentActivity; } ///< empty when absent
    [[nodiscard]] const QDateTime &runStartedAt() const { return m_runStartedAt; }
    [[nodiscard]] bool interruptAvailable() const { return m_interruptAvailable; }
    [[nodiscard]] bool canInterrupt() const; ///< softInterrupt() would do something now
    [[nodiscard]] const QStringList &slashCommands() const { return m_slashCommands; }
    [[nodiscard]] const QList<QueuedLocalSend> &pendingLocalSends() const { return m_pendingLocalSends; }
    [[nodiscard]] BackgroundTasks &backgroundTasks() { return m_backgroundTasks; }
    [[nodiscard]] const BackgroundTasks &backgroundTasks() const { return m_backgroundTasks; }
    [[nodiscard]] bool hasRunningBackgroundTask() const { return m_backgroundTasks.hasRunning(); }
    [[nodiscard]] std::optional<double> lastCostUSD() const { return m_outcome.costUSD; }
    [[nodiscard]] const std::optional<SessionTokenUsage> &sessionTokens() const { return m_outcome.tokens; }
    [[nodiscard]] const std::optional<ContextLive> &contextLive() const { return m_contextLive; }
    [[nodiscard]] const StreamObservation &streamObservation() const { return m_observation; }
    [[nodiscard]] const QStringList &lastDeniedTools() const { return m_outcome.deniedTools; }
    [[nodiscard]] const QString &lastError() const { return m_outcome.error; } ///< empty when absent
    [[nodiscard]] bool lastRunHadErrorResult() const { return m_outcome.hadErrorResult; }
    [[nodiscard]] const QString &lastRunErrorSubtype() const { return m_outcome.errorSubtype; }
    [[nodiscard]] bool stoppedByUser() const { return m_stoppedByUser; }
    [[nodiscard]] const QString &sessionId() const
    {
        return m_sessionId;
    } ///< the agent's conversation id, empty when absent
    /** The conversation that this session was opened on; empty for a new one. */
    [[nodiscard]] const QString &resumedSessionId() const { return m_resumedSessionId; }
    [[nodiscard]] bool childIsRunning() const;

    /** The mode of the live child when it is not the chosen one; shown as drift. */
    [[nodiscard]] std::optional<AgentPermissionMode> stalePermissionMode() const;
    /** The denied tools of the last run in one line, as in "WebFetch 2 · Bash 1". */
    [[nodiscard]] QString deniedToolTally() const;

    // What a person or another subsystem does.
    void send(const QString &text);             ///< the composer's send: a turn, or a place in the queue
    void sendProgrammatic(const QString &text); ///< a turn that nobody attends
    void sendPanelAction(const QString &text);  ///< a turn asked for by a panel; dropped while one runs
    void enqueue(const QString &text, bool remote, bool interactive, const QStringList &attachments);
    bool softInterrupt();
    void stop();
    void respondToPermission(PermissionChoice choice);
    void respondToQuestion(const QList<QuestionAnswer> &answers);
    void appendSystemNote(const QString &text);
    void applyProjectDefaults(const ClaudeProjectSettings &settings);
    /** What the issue that the session is to work on recommends; says so where it could not be read. */
    void applyIssueRecommendation(const IssueRecommendedRun &run);
    /** Before the first turn of a session on a past conversation: what was said, and what its workflows left.
       The first turn then continues it. */
    void seedResume(const QString &sessionId, QList<ChatMessage> messages,
                    QList<BackgroundTask> backgroundTasks);
    /** What was said before, for a session that was opened on a conversation without reading it; it stands
       before what has been said since. */
    void seedHistory(QList<ChatMessage> messages, QList<BackgroundTask> backgroundTasks);
    void seedRestoredContext(const std::optional<ContextLive> &live);
    bool addAttachment(const QString &path);
    void removeAttachment(const QString &path);
    void cancelPendingLocalSends();
    /** Takes one queued message out of the queue; absent when it has already gone. */
    std::optional<QueuedLocalSend> takePendingLocalSend(const QUuid &id);
    /** The platform's terminate request to the live child, and to one on its way out, for the end of the
       program. True when there was one. */
    bool terminateChild();

    /** One line of the child's standard output. */
    void handleLine(std::string_view line, bool padded = false);
    /** One line of the child's standard error. */
    void handleStderrLine(const QString &line);

Q_SIGNALS:
    void titleChanged();
    void isRunningChanged();
    void composerFocusTokenChanged();
    void modelChanged();
    void permissionModeChanged(); ///< also when the drift changes
    void effortChanged();
    void composerInputChanged();
    void attachmentsChanged();
    void pendingPromptChanged(); ///< either prompt
    void currentActivityChanged();
    void runStartedAtChanged();
    void interruptAvailableChanged();
    void slashCommandsChanged();
    void pendingLocalSendsChanged();
    void outcomeChanged(); ///< cost, tokens, context, denials, observation, error

private:
    /** A turn that waits for its child: for the program's path, or for the child before it to be gone. */
    struct Launch {
        QString prompt;
        bool remote = false;
        bool interactive = false;
        QStringList attachments;
    };

    /** How the child was started, and how far it has come. */
    struct Spawned {
        Launch launch;
        bool resumes = false;
        bool spoke = false;  ///< has said anything
        bool inTurn = false; ///< has begun a turn and not ended it
    };

    // ProjectChat.cpp
    void setCurrentActivity(const QString &activity);
    void setIsRunning(bool running);
    void setRunStartedAt(const QDateTime &at);
    void setSpawnedPermissionMode(std::optional<AgentPermissionMode> mode);
    void drainPendingLocalSendIfAny();
    void streamNote(const QString &line);

    // ProjectChatTurn.cpp
    void beginRun();
    void finishTurn(bool interrupted);
    void fail(const QUuid &rowId, const QString &text);
    void fireRunFinishedIfPending();
    void clearPrompts();
    void removeEmptyRunRows(const QUuid &keptRow);
    [[nodiscard]] bool runHasText() const;

    // ProjectChatRows.cpp
    QUuid appendRow(ChatMessage::Role role, const QString &text, bool streaming);
    [[nodiscard]] QUuid activeSegmentID();
    [[nodiscard]] QUuid reusableTrailingSegmentID() const;
    void bufferStreamingText(const QString &text, const QUuid &rowId);
    void flushPendingDeltas();
    void finishStreaming();
    void recordToolUses(const QList<StreamContent> &blocks);
    void rollAssistantSegment();
    void recordToolResults(const QList<StreamContent> &blocks);

    // ProjectChatLaunch.cpp
    void runProcess(Launch launch);
    void continueLaunch();
    void spawn(const Launch &launch, const QString &program);
    void childEnded(const AgentEnd &end);
    [[nodiscard]] bool foundNoConversation(const AgentEnd &end) const;
    void retireChild();
    void onRetireLimit();
    void retiredChildEnded();
    void closeStdin();
    void write(const QByteArray &line);

    // ProjectChatStream.cpp
    void onControlRequest(std::string_view line);
    void onControlCancel(const QString &requestId);
    void onInit(const StreamLine &line);
    void onStreamEvent(const StreamLine &line);
    void onAssistant(const StreamLine &line);
    void onUser(const StreamLine &line);
    void onResult(const StreamLine &line);
    void noteIfCLIRefusedOurPermissionMode(const std::optional<QString> &reported);
    void noteResultErrors(const QStringList &errors);
    void noteStreamDecodeFailure(std::string_view line);
    void noteUnknownStreamLine(const QString &type, const std::optional<QString> &subtype);
    void warnAboutStreamDropsOnce();

    QUuid m_id;
    QString m_alias, m_cwd, m_title;
    QHash<QString, QString> m_resolvedEnv;
    SessionServices m_services;

    Transcript m_transcript;
    BackgroundTasks m_backgroundTasks;
    StreamDecoder m_decoder;
    std::unique_ptr<PromptDesk> m_desk;

    ClaudeModel m_model = ClaudeModel::Opus;
    AgentPermissionMode m_permissionMode = AgentPermissionMode::Readonly;
    AgentEffort m_effort = AgentEffort::High;
    int m_composerFocusToken = 0;
    QString m_composerInput;
    qsizetype m_composerCaret = 0;
    QStringList m_attachments;
    QList<QueuedLocalSend> m_pendingLocalSends;

    // The child: at most one that counts, and one before it that is on its way out.
    std::unique_ptr<AgentProcess> m_process;
    std::unique_ptr<AgentProcess> m_retiring;
    QTimer m_retireTimer;
    bool m_askedRetiring = false; // to end, for it had not gone by itself
    std::optional<Launch> m_launch;
    Spawned m_spawned;
    std::optional<AgentPermissionMode> m_spawnedPermissionMode;
    bool m_didNotePermissionModeRefusal = false;
    bool m_currentRunInteractive = false;
    bool m_currentRunRemote = false;

    // The turn.
    bool m_isRunning = false;
    bool m_stoppedByUser = false;
    QDateTime m_runStartedAt;
    QString m_currentActivity;
    TurnState m_turn;
    QUuid m_pendingDeltaRow; // text that waits for the flush timer, and the row it belongs to
    QString m_pendingDelta;
    QTimer m_deltaFlushTimer;
    QTimer m_ownTurnTimer; // while it runs the message may yet have a turn of its own

    // What the child told of itself and of the last run.
    QString m_sessionId;
    QString m_resumedSessionId;
    bool m_conversationIsKept = false; // the agent has surely written it down
    bool m_interruptAvailable = false;
    QStringList m_slashCommands;
    RunOutcome m_outcome;
    std::optional<ContextLive> m_contextLive;
    StreamObservation m_observation;
    bool m_didWarnAboutStreamDrops = false;
};

} // namespace Vesk
