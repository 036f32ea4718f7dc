// Finished workflows of an earlier child, rebuilt from the files that they left beside the transcript.
#pragma once

#include "claude/WorkflowSnapshot.h"
#include "sessions/BackgroundTasks.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

namespace Vesk::WorkflowSnapshotFile
{

inline constexpr int maxFiles = 20;
inline constexpr qsizetype maxBytes = 4 * 1024 * 1024;

struct Restored {
    QList<BackgroundTask> tasks; ///< newest first
    int skipped = 0;             ///< files beyond the limits, and those that gave no task
};

/** The folder in which the workflows of this transcript's session lie. */
[[nodiscard]] QString folderOf(const QString &transcriptPath);

/** The newest workflows of a folder; nothing for a missing one. Reads the disk. */
[[nodiscard]] Restored restore(const QString &directory);

/** Absent for a file that cannot be read and for a workflow that did not complete. */
[[nodiscard]] std::optional<BackgroundTask> task(const QString &path);

/** When it began; its own time stamp without that; invalid without both. */
[[nodiscard]] QDateTime startDate(const WorkflowSnapshot &document);

} // namespace Vesk::WorkflowSnapshotFile
