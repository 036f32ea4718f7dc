#include "sessions/WorkflowSnapshotFile.h"

#include "base/Files.h"
#include "base/FolderListing.h"

#include <cmath>

namespace Vesk::WorkflowSnapshotFile
{

QString folderOf(const QString &transcriptPath)
{
    return transcriptPath.left(transcriptPath.lastIndexOf(u'.')) + QStringLiteral("/workflows");
}

Restored restore(const QString &directory)
{
    QList<ListedFile> files =
        regularFiles(directory, QLatin1StringView(".json")).value_or(QList<ListedFile>());
    sortNewestFirst(files);
    Restored restored;
    if (files.size() > maxFiles) {
        restored.skipped = static_cast<int>(files.size() - maxFiles);
        files.resize(maxFiles);
    }
    for (const ListedFile &file : std::as_const(files)) {
        if (const auto read = task(file.path))
            restored.tasks.append(*read);
        else
            ++restored.skipped;
    }
    return restored;
}

std::optional<BackgroundTask> task(const QString &path)
{
    const Result<QByteArray> bytes = readFile(path, maxBytes);
    const auto document = bytes ? decodeWorkflowSnapshot(*bytes) : std::nullopt;
    if (!document || document->status != QStringLiteral("completed"))
        return std::nullopt;
    const auto id = document->runId ? document->runId : document->taskId;
    if (!id)
        return std::nullopt;
    BackgroundTask task;
    task.id = *id;
    task.type = QStringLiteral("agent");
    task.taskTypeRaw = QStringLiteral("local_workflow");
    task.description = document->workflowName.value_or(QString());
    task.workflowName = document->workflowName;
    task.status = BackgroundTask::Status::Completed;
    task.isRestored = true;
    task.startedAt = startDate(*document);
    task.durationMs = document->durationMs;
    task.totalTokens = document->totalTokens;
    task.toolUses = document->totalToolCalls;
    if (document->summary)
        task.summary = BackgroundTask::clippedSummary(*document->summary);
    if (document->workflowProgress)
        task.progress = WorkflowProgress::make(*document->workflowProgress);
    return task;
}

QDateTime startDate(const WorkflowSnapshot &document)
{
    constexpr double mostSeconds = 100'000'000'000; // the year 5138: beyond it the number counts milliseconds
    constexpr double mostMs = mostSeconds * 1000;
    if (document.startTime && std::abs(*document.startTime) <= mostMs) {
        const double ms =
            *document.startTime > mostSeconds ? *document.startTime : *document.startTime * 1000;
        return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(ms));
    }
    return document.timestamp ? QDateTime::fromString(*document.timestamp, Qt::ISODateWithMs) : QDateTime();
}

} // namespace Vesk::WorkflowSnapshotFile
