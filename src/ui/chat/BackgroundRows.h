// The background work of a session as rows of one list: tasks, and below an open one what it holds.
#pragma once

#include "sessions/BackgroundTasks.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>

#include <optional>

namespace Vesk
{

/** Which row it is, for as long as it is there: rows keep it while what they show changes. */
struct BackgroundRowKey {
    enum class Kind { Task, Phase, OtherPhase, Agent, Dropped, Line, Lines, Output, Summary };

    int task = 0; ///< the number that BackgroundKeys gave
    Kind kind = Kind::Task;
    qint64 index = 0; ///< of the phase, the agent, or the line since the task's beginning

    bool operator==(const BackgroundRowKey &) const = default;
};

[[nodiscard]] size_t qHash(const BackgroundRowKey &key, size_t seed = 0);

/** Numbers tasks. A task is known first by its call and later by an id of its own, and stays the same one. */
class BackgroundKeys
{
public:
    [[nodiscard]] int numberOf(const BackgroundTask &task);

private:
    QHash<QString, int> m_numbers;
    int m_next = 1;
};

/** What a person opened (true) or folded (false). */
using BackgroundFolding = QHash<BackgroundRowKey, bool>;

/** One row. What does not belong to its kind is left as it is here. */
struct BackgroundRow {
    enum class State { Waiting, Running, Done, Failed };

    BackgroundRowKey key;
    State state = State::Waiting;
    QString title;
    QString detail;
    QString chip;            ///< the kind of a task, the model of an agent
    bool isCode = false;     ///< the title is a command or a path
    bool isRestored = false; ///< a task of an earlier run
    bool canOpen = false;
    bool isOpen = false;
    bool isLast = false; ///< the latest of the lines
    QDateTime since;     ///< while it runs
    std::optional<qint64> durationMs, tokens, toolCalls;
    int done = 0, failed = 0, total = 0; ///< agents of a phase

    bool operator==(const BackgroundRow &) const = default;
};

/** How many lines of a task's log show until all of them are asked for. */
inline constexpr int backgroundLatestLines = 3;

/** The rows: running tasks first, newest on top, then the others by their end, latest on top. A running task
   and the running phases of a workflow are open until a person folds them. */
[[nodiscard]] QList<BackgroundRow> backgroundRows(const QList<BackgroundTask> &tasks, BackgroundKeys &keys,
                                                  const BackgroundFolding &folding);

} // namespace Vesk
