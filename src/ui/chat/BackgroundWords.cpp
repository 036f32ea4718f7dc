#include "ui/chat/BackgroundWords.h"

#include "base/Text.h"
#include "ui/chat/ChatWords.h"

#include <numeric>

namespace Vesk::BackgroundWords
{

namespace
{

bool isWorkflow(const BackgroundTask &task)
{
    return task.progress || task.workflowName
        || task.taskTypeRaw.value_or(QString()).contains(QLatin1StringView("workflow"));
}

qint64 agentSum(const BackgroundTask &task, std::optional<qint64> WorkflowProgress::Agent::*number)
{
    if (!task.progress)
        return 0;
    const auto &agents = task.progress->agents;
    return std::accumulate(agents.cbegin(), agents.cend(), qint64(0),
                           [&](qint64 sum, const auto &agent) { return sum + (agent.*number).value_or(0); });
}

/** The agent's own words for an end that was no success; another word stands for itself. */
QString endWords(const BackgroundTask &task)
{
    const QString word = task.endWord.value_or(QString());
    if (word == u"stopped")
        return QStringLiteral("중단됨(stopped)");
    if (word == u"killed")
        return QStringLiteral("강제 종료됨(killed)");
    if (task.endedWithChild)
        return QStringLiteral("세션과 함께 멈춤");
    return QStringLiteral("실패");
}

QString stateWords(BackgroundRow::State state)
{
    switch (state) {
    case BackgroundRow::State::Waiting:
        return QStringLiteral("대기");
    case BackgroundRow::State::Running:
        return QStringLiteral("실행 중");
    case BackgroundRow::State::Done:
        return QStringLiteral("끝남");
    case BackgroundRow::State::Failed:
        return QStringLiteral("실패");
    }
    return {};
}

} // namespace

QString title(const BackgroundTask &task)
{
    const QString name = isWorkflow(task) ? task.workflowName.value_or(QString()) : QString();
    for (const QString &candidate : {name, task.description, task.type}) {
        const QString line = Text::firstLine(Text::trimWhitespace(candidate));
        if (!line.isEmpty())
            return line;
    }
    return task.id;
}

QString kind(const BackgroundTask &task)
{
    if (isWorkflow(task))
        return QStringLiteral("워크플로");
    if (isCommand(task))
        return QStringLiteral("명령");
    const QString raw = task.taskTypeRaw.value_or(QString());
    return raw.isEmpty() || raw.contains(QLatin1StringView("agent")) ? QStringLiteral("하위 에이전트")
                                                                     : QStringLiteral("작업");
}

bool isCommand(const BackgroundTask &task)
{
    const QString raw = task.taskTypeRaw.value_or(QString());
    return raw.contains(QLatin1StringView("bash")) || raw.contains(QLatin1StringView("shell"));
}

QString detail(const BackgroundTask &task)
{
    QStringList parts;
    if (task.status == BackgroundTask::Status::Failed)
        parts << endWords(task);
    const QString name = title(task);
    const QString description = Text::firstLine(Text::trimWhitespace(task.description));
    if (!description.isEmpty() && description != name)
        parts << description;
    if (task.type != u"agent" && task.type != name)
        parts << task.type;
    if (const qint64 tokens = task.totalTokens.value_or(agentSum(task, &WorkflowProgress::Agent::tokens)))
        parts << QStringLiteral("토큰 ") + ChatWords::tokens(tokens);
    if (const qint64 calls = task.toolUses.value_or(agentSum(task, &WorkflowProgress::Agent::toolCalls)))
        parts << QStringLiteral("도구 %1회").arg(calls);
    return parts.join(QStringLiteral(" · "));
}

QString lines(qsizetype shown, qsizetype kept, qsizetype total)
{
    QString words = shown == total ? QStringLiteral("전체 %1줄").arg(total)
                                   : QStringLiteral("최근 %1줄 · 전체 %2줄").arg(shown).arg(total);
    if (shown == kept && kept < total)
        words += QStringLiteral(" · 앞 %1줄은 남아 있지 않음").arg(total - kept);
    return words;
}

QString accessibleText(const BackgroundRow &row)
{
    using Kind = BackgroundRowKey::Kind;
    QStringList parts {row.title};
    switch (row.key.kind) {
    case Kind::Task:
        parts << row.chip << stateWords(row.state) << row.detail;
        if (row.isRestored)
            parts << QStringLiteral("지난 기록");
        break;
    case Kind::Phase:
    case Kind::OtherPhase:
        parts << QStringLiteral("%1개 중 %2개 끝남").arg(row.total).arg(row.done);
        if (row.failed > 0)
            parts << QStringLiteral("실패 %1").arg(row.failed);
        break;
    case Kind::Agent:
        parts << stateWords(row.state) << row.chip << row.detail;
        if (row.tokens)
            parts << QStringLiteral("토큰 ") + ChatWords::tokens(*row.tokens);
        if (row.toolCalls)
            parts << QStringLiteral("도구 %1회").arg(*row.toolCalls);
        break;
    case Kind::Output:
        parts.prepend(QStringLiteral("출력 파일 열기"));
        break;
    case Kind::Summary:
        parts.prepend(QStringLiteral("결과"));
        break;
    case Kind::Dropped:
    case Kind::Line:
    case Kind::Lines:
        break;
    }
    if (row.durationMs)
        parts << ChatWords::duration(*row.durationMs);
    if (row.canOpen)
        parts << (row.isOpen ? QStringLiteral("펼쳐짐") : QStringLiteral("접힘"));
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

} // namespace Vesk::BackgroundWords
