#include "ui/chat/BackgroundRows.h"

#include "ui/chat/BackgroundWords.h"
#include "ui/chat/ChatWords.h"

#include <QHashFunctions>
#include <QSet>

#include <algorithm>
#include <array>
#include <numeric>

namespace Vesk
{

namespace
{

using Kind = BackgroundRowKey::Kind;
using State = BackgroundRow::State;
using Status = BackgroundTask::Status;

// About what three lines of a narrow panel hold.
constexpr qsizetype shortSummaryCharacters = 90;
constexpr qsizetype shortSummaryLines = 3;
// Beyond any number of tasks in one session.
constexpr int sharedIdStep = 1 << 20;

bool isLong(const QString &summary)
{
    return summary.size() > shortSummaryCharacters || summary.count(u'\n') >= shortSummaryLines;
}

template <std::size_t Count>
bool isOneOf(const QString &word, const std::array<QLatin1StringView, Count> &words)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

State stateOf(const WorkflowProgress::Agent &agent)
{
    static constexpr std::array done {QLatin1StringView("done"), QLatin1StringView("completed"),
                                      QLatin1StringView("success")};
    static constexpr std::array failed {QLatin1StringView("failed"), QLatin1StringView("error"),
                                        QLatin1StringView("stopped"), QLatin1StringView("killed"),
                                        QLatin1StringView("cancelled")};
    static constexpr std::array waiting {QLatin1StringView(""), QLatin1StringView("queued"),
                                         QLatin1StringView("pending"), QLatin1StringView("waiting"),
                                         QLatin1StringView("skipped")};
    if (isOneOf(agent.stateRaw, done))
        return State::Done;
    if (isOneOf(agent.stateRaw, failed))
        return State::Failed;
    return isOneOf(agent.stateRaw, waiting) ? State::Waiting : State::Running;
}

State stateOf(Status status)
{
    switch (status) {
    case Status::Running:
        return State::Running;
    case Status::Completed:
        return State::Done;
    case Status::Failed:
        return State::Failed;
    }
    return State::Failed;
}

/** Places of the tasks in the order of the panel. */
QList<qsizetype> panelOrder(const QList<BackgroundTask> &tasks)
{
    QList<qsizetype> order(tasks.size());
    std::iota(order.begin(), order.end(), 0);
    const auto moment = [](const BackgroundTask &task) {
        return task.status != Status::Running && task.endedAt.isValid() ? task.endedAt : task.startedAt;
    };
    std::sort(order.begin(), order.end(), [&](qsizetype a, qsizetype b) {
        const BackgroundTask &left = tasks.at(a);
        const BackgroundTask &right = tasks.at(b);
        const bool leftRuns = left.status == Status::Running;
        if (leftRuns != (right.status == Status::Running))
            return leftRuns;
        const QDateTime leftMoment = moment(left);
        const QDateTime rightMoment = moment(right);
        return leftMoment != rightMoment ? leftMoment > rightMoment : a > b;
    });
    return order;
}

/** Writes the rows of one task after another. */
class RowWriter
{
public:
    RowWriter(QList<BackgroundRow> &rows, const BackgroundFolding &folding)
        : m_rows(rows)
        , m_folding(folding)
    {
    }

    void write(const BackgroundTask &task, int number)
    {
        m_number = number;
        m_task = &task;
        BackgroundRow head = row(Kind::Task);
        head.state = stateOf(task.status);
        head.title = BackgroundWords::title(task);
        head.detail = BackgroundWords::detail(task);
        head.chip = BackgroundWords::kind(task);
        head.isCode = BackgroundWords::isCommand(task);
        head.isRestored = task.isRestored;
        head.durationMs = duration();
        if (runs())
            head.since = task.startedAt;
        head.canOpen = task.progress || !task.activityLog.isEmpty() || task.outputFile
            || (task.summary && (runs() || isLong(*task.summary)));
        head.isOpen = head.canOpen && isOpen(head.key, runs());
        m_rows.append(head);
        if (head.isOpen) {
            if (task.progress)
                writeWorkflow(*task.progress);
            writeLog();
        }
        writeSummary(head.isOpen);
        if (head.isOpen && task.outputFile && !task.outputFile->isEmpty()) {
            BackgroundRow output = row(Kind::Output);
            output.title = *task.outputFile;
            output.isCode = true;
            m_rows.append(output);
        }
    }

private:
    [[nodiscard]] bool runs() const { return m_task->status == Status::Running; }
    [[nodiscard]] bool isOpen(const BackgroundRowKey &key, bool byItself) const
    {
        return m_folding.value(key, byItself);
    }
    [[nodiscard]] BackgroundRow row(Kind kind, qint64 index = 0) const
    {
        BackgroundRow made;
        made.key = {m_number, kind, index};
        return made;
    }

    [[nodiscard]] std::optional<qint64> duration() const
    {
        if (runs())
            return std::nullopt;
        if (m_task->durationMs)
            return m_task->durationMs;
        if (m_task->startedAt.isValid() && m_task->endedAt.isValid())
            return m_task->startedAt.msecsTo(m_task->endedAt);
        return std::nullopt;
    }

    void writeWorkflow(const WorkflowProgress &progress)
    {
        int ordinal = 0;
        for (const WorkflowProgress::PhaseRow &phase : progress.phaseRows()) {
            BackgroundRow head = phase.index ? row(Kind::Phase, *phase.index) : row(Kind::OtherPhase);
            head.title = phase.index ? QStringLiteral("%1 %2").arg(++ordinal).arg(phase.title) : phase.title;
            head.done = phase.done;
            head.total = phase.total;
            bool isRunning = false;
            for (const auto &agent : phase.agents) {
                const State state = stateOf(agent);
                head.failed += state == State::Failed ? 1 : 0;
                isRunning |= runs() && state == State::Running;
            }
            head.state = isRunning                             ? State::Running
                : head.failed > 0                              ? State::Failed
                : phase.total > 0 && phase.done == phase.total ? State::Done
                                                               : State::Waiting;
            head.canOpen = phase.total > 0;
            head.isOpen = head.canOpen && isOpen(head.key, isRunning);
            m_rows.append(head);
            if (head.isOpen) {
                for (const auto &agent : phase.agents)
                    writeAgent(agent);
            }
        }
        if (progress.droppedAgents > 0) {
            BackgroundRow dropped = row(Kind::Dropped);
            dropped.title = QStringLiteral("외 %1개").arg(progress.droppedAgents);
            m_rows.append(dropped);
        }
    }

    void writeAgent(const WorkflowProgress::Agent &agent)
    {
        BackgroundRow line = row(Kind::Agent, agent.index);
        line.state = stateOf(agent);
        if (line.state == State::Running && !runs())
            line.state = State::Failed; // nobody works on it any more
        line.title = agent.label.isEmpty() ? QStringLiteral("에이전트 %1").arg(agent.index) : agent.label;
        line.chip = ChatWords::modelName(agent.model.value_or(QString()));
        if (agent.attempt.value_or(1) > 1)
            line.detail = QStringLiteral("%1번째 시도").arg(*agent.attempt);
        line.tokens = agent.tokens;
        line.toolCalls = agent.toolCalls;
        line.durationMs = agent.durationMs;
        m_rows.append(line);
    }

    void writeLog()
    {
        const QStringList &log = m_task->activityLog;
        if (log.isEmpty())
            return;
        BackgroundRow foot = row(Kind::Lines);
        foot.canOpen = log.size() > backgroundLatestLines;
        foot.isOpen = foot.canOpen && isOpen(foot.key, false);
        const qsizetype shown =
            foot.isOpen ? log.size() : std::min<qsizetype>(log.size(), backgroundLatestLines);
        for (qsizetype place = log.size() - shown; place < log.size(); ++place) {
            BackgroundRow line = row(Kind::Line, m_task->activityOverflow + place);
            line.title = log.at(place);
            line.isCode = true;
            line.isLast = place == log.size() - 1;
            m_rows.append(line);
        }
        foot.title = BackgroundWords::lines(shown, log.size(), log.size() + m_task->activityOverflow);
        if (foot.canOpen)
            m_rows.append(foot);
    }

    void writeSummary(bool headIsOpen)
    {
        if (!m_task->summary || (runs() && !headIsOpen))
            return;
        BackgroundRow result = row(Kind::Summary);
        result.title = *m_task->summary;
        result.isOpen = headIsOpen;
        m_rows.append(result);
    }

    QList<BackgroundRow> &m_rows;
    const BackgroundFolding &m_folding;
    int m_number = 0;
    const BackgroundTask *m_task = nullptr;
};

} // namespace

size_t qHash(const BackgroundRowKey &key, size_t seed)
{
    return qHashMulti(seed, key.task, static_cast<int>(key.kind), key.index);
}

int BackgroundKeys::numberOf(const BackgroundTask &task)
{
    int number = m_numbers.value(task.id);
    if (number == 0 && task.toolUseId)
        number = m_numbers.value(*task.toolUseId);
    if (number == 0)
        number = m_next++;
    m_numbers.insert(task.id, number);
    if (task.toolUseId)
        m_numbers.insert(*task.toolUseId, number);
    return number;
}

QList<BackgroundRow> backgroundRows(const QList<BackgroundTask> &tasks, BackgroundKeys &keys,
                                    const BackgroundFolding &folding)
{
    QList<BackgroundRow> rows;
    RowWriter writer(rows, folding);
    QSet<int> written;
    for (const qsizetype place : panelOrder(tasks)) {
        const BackgroundTask &task = tasks.at(place);
        int number = keys.numberOf(task);
        while (written.contains(number)) // two tasks that claim one id are still two
            number += sharedIdStep;
        written.insert(number);
        writer.write(task, number);
    }
    return rows;
}

} // namespace Vesk
