#include "sessions/BackgroundTasks.h"

#include "base/Text.h"
#include "sessions/ChatMessage.h"

#include <algorithm>
#include <iterator>

namespace Vesk
{

namespace
{

constexpr qsizetype maxResultSummaryCharacters = 400;

bool isBlank(const std::optional<QString> &text)
{
    return !text || Text::trimWhitespace(*text).isEmpty();
}

std::optional<QString> descriptionOf(const StreamTask &line)
{
    if (!isBlank(line.taskDescription))
        return line.taskDescription;
    return isBlank(line.description) ? std::nullopt : line.description;
}

std::optional<QString> resultSummary(const QString &text)
{
    const QString trimmed = Text::trimWhitespace(text);
    if (trimmed.isEmpty())
        return std::nullopt;
    return Text::clipped(trimmed, maxResultSummaryCharacters);
}

/** What a new task and a known one take from a line alike. */
void applyLine(const StreamTask &line, BackgroundTask &task)
{
    if (const auto description = descriptionOf(line))
        task.description = *description;
    if (line.lastToolName)
        task.appendActivity(*line.lastToolName);
    if (line.summary)
        task.summary = BackgroundTask::clippedSummary(*line.summary);
    if (line.outputFile)
        task.outputFile = line.outputFile;
    applyBackgroundDetail(line, task);
}

} // namespace

void BackgroundTask::setStatus(Status newStatus, const QDateTime &now)
{
    if (newStatus == Status::Running)
        endedAt = {};
    else if (status == Status::Running || !endedAt.isValid())
        endedAt = now;
    status = newStatus;
}

void BackgroundTask::appendActivity(const QString &text)
{
    if (!activityLog.isEmpty() && activityLog.last() == text)
        return;
    activityLog.append(text);
    if (activityLog.size() > maxActivityLines) {
        const qsizetype excess = activityLog.size() - maxActivityLines;
        activityLog.remove(0, excess);
        activityOverflow += static_cast<int>(excess);
    }
}

std::optional<QString> BackgroundTask::clippedSummary(const QString &text)
{
    const QString trimmed = Text::trimWhitespace(text);
    if (trimmed.isEmpty())
        return std::nullopt;
    const qsizetype count = Text::characterCount(trimmed);
    if (count <= maxSummaryCharacters)
        return trimmed;
    return Text::firstCharacters(trimmed, maxSummaryCharacters)
        + QStringLiteral("\n… (이후 %1자 생략)").arg(count - maxSummaryCharacters);
}

BackgroundTask::Status subagentStatus(const QString &subtype, const std::optional<QString> &status)
{
    const QString word = status.value_or(QString());
    if (word == u"completed" || word == u"success" || word == u"done")
        return BackgroundTask::Status::Completed;
    if (word == u"failed" || word == u"error" || word == u"stopped" || word == u"killed")
        return BackgroundTask::Status::Failed;
    return subtype == u"task_notification" ? BackgroundTask::Status::Completed
                                           : BackgroundTask::Status::Running;
}

void applyBackgroundDetail(const StreamTask &line, BackgroundTask &task)
{
    if (line.usage) {
        if (line.usage->totalTokens)
            task.totalTokens = line.usage->totalTokens;
        if (line.usage->toolUses)
            task.toolUses = line.usage->toolUses;
        if (line.usage->durationMs)
            task.durationMs = line.usage->durationMs;
    }
    if (line.taskType)
        task.taskTypeRaw = line.taskType;
    if (line.workflowName)
        task.workflowName = line.workflowName;
    if (line.workflowProgress) {
        if (task.progress)
            task.progress->apply(*line.workflowProgress);
        else
            task.progress = WorkflowProgress::make(*line.workflowProgress);
    }
}

bool BackgroundTasks::hasRunning() const
{
    return std::any_of(m_tasks.cbegin(), m_tasks.cend(), [](const BackgroundTask &task) {
        return task.status == BackgroundTask::Status::Running;
    });
}

void BackgroundTasks::updateBackgroundTask(const StreamLine &line, const QDateTime &now)
{
    if (!line.task)
        return;
    const StreamTask &told = *line.task;
    if (!told.taskId && !told.toolUseId)
        return;
    const QString subtype = line.subtype.value_or(QString());
    const std::optional<QString> word = told.status ? told.status : told.patchStatus;
    const BackgroundTask::Status status = subagentStatus(subtype, word);

    const auto isMeant = [&](const BackgroundTask &task) {
        return (told.taskId && (task.id == *told.taskId || task.toolUseId == told.taskId))
            || (told.toolUseId && (task.id == *told.toolUseId || task.toolUseId == told.toolUseId));
    };
    auto task = std::find_if(m_tasks.begin(), m_tasks.end(), isMeant);
    if (task == m_tasks.end()) {
        BackgroundTask added;
        added.id = told.taskId ? *told.taskId : *told.toolUseId;
        added.type = told.subagentType.value_or(QStringLiteral("agent"));
        added.startedAt = now;
        m_tasks.append(added);
        task = m_tasks.end() - 1;
        task->setStatus(status, now);
    } else {
        // A late line without a status word must not bring finished work back to life.
        const bool revives = task->status != BackgroundTask::Status::Running
            && status == BackgroundTask::Status::Running && !word && subtype != u"task_started";
        if (!revives)
            task->setStatus(status, now);
        if (told.taskId)
            task->id = *told.taskId;
    }
    if (told.toolUseId && !task->toolUseId)
        task->toolUseId = told.toolUseId;
    if (status == BackgroundTask::Status::Failed)
        task->endWord = word;
    applyLine(told, *task);
    Q_EMIT tasksChanged();
}

void BackgroundTasks::registerSubagentIfNeeded(const StreamContent &block, const QDateTime &now)
{
    if (block.type != u"tool_use" || !block.id || !block.name
        || (*block.name != u"Task" && *block.name != u"Agent"))
        return;
    const QJsonObject input = block.input.toObject();
    const bool inForeground = !input.value(QLatin1StringView("run_in_background")).toBool(false);
    const auto known = std::find_if(m_tasks.begin(), m_tasks.end(), [&](const BackgroundTask &task) {
        return task.toolUseId == block.id || task.id == *block.id;
    });
    if (known != m_tasks.end()) {
        known->endsWithToolResult = inForeground; // its own first line came before the call's
        return;
    }
    BackgroundTask task;
    task.id = *block.id;
    task.toolUseId = block.id;
    task.type = input.value(QLatin1StringView("subagent_type")).toString(QStringLiteral("agent"));
    const QJsonValue description = input.value(QLatin1StringView("description"));
    task.description =
        description.isString() ? description.toString() : input.value(QLatin1StringView("prompt")).toString();
    task.startedAt = now;
    task.endsWithToolResult = inForeground;
    m_tasks.append(task);
    Q_EMIT tasksChanged();
}

void BackgroundTasks::recordSubagentActivity(const QString &parentToolUseId, const StreamLine &line)
{
    if (!line.message)
        return;
    const auto task = std::find_if(m_tasks.begin(), m_tasks.end(), [&](const BackgroundTask &candidate) {
        return candidate.toolUseId == parentToolUseId || candidate.id == parentToolUseId;
    });
    if (task == m_tasks.end())
        return;
    bool grew = false;
    for (const StreamContent &block : line.message->content) {
        if (block.type != u"tool_use")
            continue;
        const QString name = block.name.value_or(QStringLiteral("도구"));
        task->appendActivity(block.input.isObject() ? ToolActivity::summaryLine(name, block.input.toObject())
                                                    : name);
        grew = true;
    }
    if (grew)
        Q_EMIT tasksChanged();
}

void BackgroundTasks::finalizeSubagentsFromToolResults(const QList<StreamContent> &blocks,
                                                       const QDateTime &now)
{
    bool ended = false;
    for (const StreamContent &block : blocks) {
        if (block.type != u"tool_result" || !block.toolUseId)
            continue;
        const auto task = std::find_if(m_tasks.begin(), m_tasks.end(), [&](const BackgroundTask &candidate) {
            return candidate.toolUseId == block.toolUseId && candidate.endsWithToolResult
                && candidate.status == BackgroundTask::Status::Running;
        });
        if (task == m_tasks.end())
            continue;
        task->summary = resultSummary(block.resultText());
        task->setStatus(block.isError ? BackgroundTask::Status::Failed : BackgroundTask::Status::Completed,
                        now);
        ended = true;
    }
    if (ended)
        Q_EMIT tasksChanged();
}

void BackgroundTasks::reset(QList<BackgroundTask> tasks)
{
    m_tasks = std::move(tasks);
    Q_EMIT tasksChanged();
}

void BackgroundTasks::failRunning(const QDateTime &now)
{
    bool ended = false;
    for (BackgroundTask &task : m_tasks) {
        if (task.status != BackgroundTask::Status::Running)
            continue;
        task.setStatus(BackgroundTask::Status::Failed, now);
        task.endedWithChild = true;
        ended = true;
    }
    if (ended)
        Q_EMIT tasksChanged();
}

void BackgroundTasks::stopForeground(const QDateTime &now)
{
    bool ended = false;
    for (BackgroundTask &task : m_tasks) {
        if (task.status != BackgroundTask::Status::Running || !task.endsWithToolResult)
            continue;
        task.setStatus(BackgroundTask::Status::Failed, now);
        task.endWord = QStringLiteral("stopped");
        ended = true;
    }
    if (ended)
        Q_EMIT tasksChanged();
}

void BackgroundTasks::keepRestored()
{
    QList<BackgroundTask> kept = keepingRestored(m_tasks);
    if (kept.size() == m_tasks.size())
        return;
    m_tasks = std::move(kept);
    Q_EMIT tasksChanged();
}

QList<BackgroundTask> BackgroundTasks::keepingRestored(const QList<BackgroundTask> &tasks)
{
    QList<BackgroundTask> kept;
    std::copy_if(tasks.cbegin(), tasks.cend(), std::back_inserter(kept),
                 [](const BackgroundTask &task) { return task.isRestored; });
    return kept;
}

} // namespace Vesk
