// Work that a session's child does beside the turn: sub-agents, background commands, workflows.
#pragma once

#include "claude/StreamLine.h"
#include "sessions/WorkflowProgress.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

namespace Vesk
{

/** One piece of background work. */
struct BackgroundTask {
    enum class Status { Running, Completed, Failed };

    static constexpr qsizetype maxActivityLines = 200;
    static constexpr qsizetype maxSummaryCharacters = 4000;

    QString id; ///< the agent's task id; the tool use id until that is known
    std::optional<QString> toolUseId;
    QString type; ///< the kind of sub-agent, or "agent"
    QString description;
    Status status = Status::Running;
    QStringList activityLog; ///< the latest tools, at most maxActivityLines
    std::optional<QString> summary;
    std::optional<QString> outputFile;
    QDateTime startedAt;
    QDateTime endedAt; ///< invalid while it runs, and when it is not known
    std::optional<qint64> totalTokens, toolUses, durationMs;
    std::optional<QString> taskTypeRaw, workflowName;
    std::optional<WorkflowProgress> progress;
    std::optional<QString> endWord;  ///< the agent's own word for how it failed, as in "stopped"
    int activityOverflow = 0;        ///< lines dropped from the log
    bool endedWithChild = false;     ///< cut off: the child that did it is gone
    bool isRestored = false;         ///< finished work of an earlier child, rebuilt from a file
    bool endsWithToolResult = false; ///< a sub-agent in the foreground: the turn waits for it

    /** Ends it, or brings it back to life; the moment of its end is that of the first word of it. */
    void setStatus(Status newStatus, const QDateTime &now);
    /** Adds a line to the log; the line that is already last is not repeated. */
    void appendActivity(const QString &text);

    /** Trimmed; absent when blank; cut to maxSummaryCharacters with the number of characters left out. */
    [[nodiscard]] static std::optional<QString> clippedSummary(const QString &text);
};

/** The status that a `task_` line tells. A notification needs no status word: it means the end. */
[[nodiscard]] BackgroundTask::Status subagentStatus(const QString &subtype,
                                                    const std::optional<QString> &status);

/** Takes the usage, the kind and the workflow's course over from a line. */
void applyBackgroundDetail(const StreamTask &line, BackgroundTask &task);

/** The background work of one session. */
class BackgroundTasks : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] const QList<BackgroundTask> &tasks() const { return m_tasks; }
    [[nodiscard]] bool hasRunning() const;

    /** A `system` line whose subtype begins `task_`. */
    void updateBackgroundTask(const StreamLine &line, const QDateTime &now);
    /** A tool call: one that starts a sub-agent becomes a task. */
    void registerSubagentIfNeeded(const StreamContent &block, const QDateTime &now);
    /** A line that a sub-agent wrote: its tools enter the task's log, all else is dropped. */
    void recordSubagentActivity(const QString &parentToolUseId, const StreamLine &line);
    /** Tool results: a sub-agent in the foreground ends with its own. */
    void finalizeSubagentsFromToolResults(const QList<StreamContent> &blocks, const QDateTime &now);

    /** Puts finished work of an earlier child in the place of everything. */
    void reset(QList<BackgroundTask> tasks);
    /** The child is gone, and with it what it still ran. */
    void failRunning(const QDateTime &now);
    /** The turn was cut off, and with it the sub-agents that it waited for. */
    void stopForeground(const QDateTime &now);
    /** A new child starts: only restored tasks, which describe finished work, stay. */
    void keepRestored();
    [[nodiscard]] static QList<BackgroundTask> keepingRestored(const QList<BackgroundTask> &tasks);

Q_SIGNALS:
    void tasksChanged();

private:
    QList<BackgroundTask> m_tasks;
};

} // namespace Vesk
