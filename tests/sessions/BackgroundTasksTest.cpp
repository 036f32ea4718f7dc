#include "sessions/BackgroundTasks.h"

#include "support/TestRegistry.h"

#include <QJsonDocument>
#include <QtTest>

using namespace Vesk;

namespace
{

using Status = BackgroundTask::Status;

StreamLine decoded(const char *json)
{
    StreamDecoder decoder;
    return decoder.decode(json).value();
}

/** Background work fed with lines as they come from the child. */
struct Board {
    BackgroundTasks tasks;
    QDateTime now = QDateTime::fromSecsSinceEpoch(1'700'000'000);

    void line(const char *json)
    {
        const StreamLine read = decoded(json);
        if (read.task)
            tasks.updateBackgroundTask(read, now);
        else if (read.parentToolUseId)
            tasks.recordSubagentActivity(*read.parentToolUseId, read);
        else if (read.type == u"user")
            tasks.finalizeSubagentsFromToolResults(read.message->content, now);
        else
            for (const StreamContent &block : read.message->content)
                tasks.registerSubagentIfNeeded(block, now);
    }
    const BackgroundTask &only() const
    {
        Q_ASSERT(tasks.tasks().size() == 1);
        return tasks.tasks().first();
    }
};

constexpr auto agentCall = R"({"type":"assistant","message":{"content":[{"type":"tool_use","id":"tu1",)"
                           R"("name":"Agent","input":{"subagent_type":"Explore","description":"look"}}]}})";
constexpr auto backgroundCall =
    R"({"type":"assistant","message":{"content":[{"type":"tool_use","id":"tu1","name":"Task",)"
    R"("input":{"prompt":"p","run_in_background":true}}]}})";
constexpr auto toolResult = R"({"type":"user","message":{"content":[{"type":"tool_result",)"
                            R"("tool_use_id":"tu1","content":" found it "}]}})";

} // namespace

class BackgroundTasksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void statusWords_data()
    {
        QTest::addColumn<QString>("subtype");
        QTest::addColumn<QString>("word");
        QTest::addColumn<int>("status");
        const auto row = [](const QString &subtype, const QString &word, Status status) {
            QTest::addRow("%s %s", qPrintable(subtype), qPrintable(word)) << subtype << word << int(status);
        };
        row(u"task_notification"_qs, {}, Status::Completed);
        row(u"task_progress"_qs, {}, Status::Running);
        row(u"task_progress"_qs, u"success"_qs, Status::Completed);
        for (const QString &word : {u"failed"_qs, u"error"_qs, u"stopped"_qs, u"killed"_qs})
            row(u"task_notification"_qs, word, Status::Failed);
        row(u"task_notification"_qs, u"odd"_qs, Status::Completed);
    }

    void statusWords()
    {
        QFETCH(QString, subtype);
        QFETCH(QString, word);
        QFETCH(int, status);
        QCOMPARE(int(subagentStatus(subtype, word.isNull() ? std::nullopt : std::optional(word))), status);
    }

    void foregroundSubagentEndsWithItsToolResult()
    {
        Board board;
        board.line(agentCall);
        board.line(agentCall); // told again: no second task
        QCOMPARE(board.only().type, u"Explore"_qs);
        QCOMPARE(board.only().description, u"look"_qs);
        QVERIFY(board.tasks.hasRunning());
        board.line(R"({"type":"assistant","parent_tool_use_id":"tu1","message":{"content":[)"
                   R"({"type":"text","text":"chatter"},{"type":"tool_use","name":"Read",)"
                   R"("input":{"file_path":"/a/b/c"}}]}})");
        QCOMPARE(board.only().activityLog, QStringList {u"Read · …/b/c"_qs});
        board.line(toolResult);
        QCOMPARE(board.only().status, Status::Completed);
        QCOMPARE(*board.only().summary, u"found it"_qs);
    }

    void backgroundSubagentOutlivesItsToolResult()
    {
        Board board;
        board.line(backgroundCall);
        board.line(toolResult);
        QCOMPARE(board.only().status, Status::Running);
        board.line(R"({"type":"system","subtype":"task_started","task_id":"t9","tool_use_id":"tu1"})");
        QCOMPARE(board.only().id, u"t9"_qs); // later lines name the task id alone
        board.line(
            R"({"type":"system","subtype":"task_updated","task_id":"t9","patch":{"status":"killed"}})");
        QCOMPARE(board.only().status, Status::Failed);
        const QDateTime ended = board.now;
        board.now = ended.addSecs(5);
        board.line(R"({"type":"system","subtype":"task_updated","task_id":"t9","patch":{"end_time":1}})");
        QCOMPARE(board.only().status, Status::Failed); // no word, no life
        QCOMPARE(*board.only().endWord, u"killed"_qs);
        QCOMPARE(board.only().endedAt, ended);
    }

    void theTasksOwnLineMayComeBeforeTheCall()
    {
        Board board;
        board.line(
            R"({"type":"system","subtype":"task_started","task_id":"t1","tool_use_id":"tu1",)"
            R"("description":"d","last_tool_name":"Grep","summary":" s ","usage":{"total_tokens":7}})");
        QCOMPARE(board.only().activityLog, QStringList {u"Grep"_qs});
        QCOMPARE(*board.only().summary, u"s"_qs);
        QCOMPARE(*board.only().totalTokens, 7);
        board.line(agentCall);
        board.line(toolResult);
        QCOMPARE(board.only().status, Status::Completed);
        QCOMPARE(board.only().id, u"t1"_qs);
    }

    void aBackgroundCommandIsATaskWithoutACall()
    {
        Board board;
        board.line(R"({"type":"system","subtype":"task_started","task_id":"b1","tool_use_id":"tu1"})");
        board.line(toolResult); // "running in background": not its end
        QVERIFY(board.tasks.hasRunning());
        board.line(R"({"type":"system","subtype":"task_notification","task_id":"b1"})");
        QVERIFY(!board.tasks.hasRunning());
        board.line(R"({"type":"system","subtype":"task_started"})"); // names nothing
        QCOMPARE(board.tasks.tasks().size(), 1);
    }

    void capsCountWhatTheyDrop()
    {
        BackgroundTask task;
        for (int i = 0; i <= 200; ++i) {
            task.appendActivity(QString::number(i));
            task.appendActivity(QString::number(i));
        }
        QCOMPARE(task.activityLog.size(), 200);
        QCOMPARE(task.activityLog.first(), u"1"_qs);
        QCOMPARE(task.activityOverflow, 1);
        QVERIFY(!BackgroundTask::clippedSummary(u" \n"_qs));
        QCOMPARE(*BackgroundTask::clippedSummary(QString(4003, u'가')),
                 QString(4000, u'가') + u"\n… (이후 3자 생략)"_qs);
    }

    void workflowLinesCarryChanges()
    {
        Board board;
        board.line(
            R"({"type":"system","subtype":"task_progress","task_id":"w","workflow_progress":[)"
            R"({"type":"workflow_phase","index":2,"title":"Build"},)"
            R"({"type":"workflow_phase","index":1,"title":"Plan"},{"type":"workflow_phase","index":3},)"
            R"({"type":"workflow_agent","index":2,"label":"b","phaseIndex":1,"state":"running"},)"
            R"({"type":"workflow_agent","index":1,"label":"a","phaseIndex":1,"state":"done","tokens":5},)"
            R"({"type":"workflow_agent","index":3,"label":"c","phaseIndex":9}]})");
        board.line(R"({"type":"system","subtype":"task_progress","task_id":"w","workflow_progress":[)"
                   R"({"type":"workflow_agent","index":2,"state":"done","tokens":4},{"type":"other"}]})");
        const WorkflowProgress &progress = *board.only().progress;
        QCOMPARE(progress.totalTokens(), 9);
        const auto rows = progress.phaseRows();
        QCOMPARE(rows.size(), 3);
        QCOMPARE(rows.at(0).title, u"Plan"_qs);
        QCOMPARE(rows.at(0).done, 2);
        QCOMPARE(rows.at(0).agents.first().label, u"a"_qs);
        QCOMPARE(rows.at(1).total, 0);
        QVERIFY(!rows.at(2).index);
        QCOMPARE(rows.at(2).title, u"기타"_qs);
        QCOMPARE(rows.at(2).agents.first().label, u"c"_qs);

        QList<StreamWorkflowEntry> many;
        for (int i = 0; i < 2003; ++i) {
            StreamWorkflowEntry entry;
            entry.type = u"workflow_agent"_qs;
            entry.index = i;
            many << entry << entry;
        }
        std::reverse(many.begin(), many.end());
        QCOMPARE(WorkflowProgress::make(many)->agents.size(), 2000);
        QCOMPARE(WorkflowProgress::make(many)->droppedAgents, 3);
        QVERIFY(!WorkflowProgress::make({StreamWorkflowEntry {}}));
    }
};

VESK_TEST(BackgroundTasksTest)

#include "BackgroundTasksTest.moc"
