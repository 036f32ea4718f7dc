// Whole turns with a real child that plays scenarios.
#include "claude/ClaudeCLI.h"
#include "sessions/AgentSessionStore.h"
#include "support/ScriptedAgent.h"
#include "support/TestRegistry.h"

#include <QtTest>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace Vesk;
using namespace Vesk::Test;

namespace
{

/** A store with one session on the scripted agent. */
struct SessionDesk {
    ScriptedAgent agent;
    ExecutableLocator locator {agent.program()};
    AgentSessionStore store {{.locator = &locator}};
    ProjectChat *chat = nullptr;
    QStringList notes;
    int finished = 0;
    bool success = false;

    explicit SessionDesk(const QList<Scenario> &runs)
    {
        agent.setRuns(runs);
        store.resolveEnv = [this] {
            QHash<QString, QString> env;
            const QProcessEnvironment given = agent.environment();
            for (const QString &key : given.keys())
                env.insert(key, given.value(key));
            return env;
        };
        store.streamNoteSink = [this](const QString &line) { notes << line; };
        chat = store.newSession(
            {.alias = u"p"_s, .path = agent.projectFolder(), .extraEnv = {}, .colorHex = {}});
    }
    void watchEnd()
    {
        chat->onRunFinished = [this](bool ok) {
            ++finished;
            success = ok;
        };
    }
    QString lastText() const
    {
        return chat->messages().isEmpty() ? QString() : chat->messages().rows().last().text;
    }
    QStringList answers() const
    {
        QStringList texts;
        for (const ChatMessage &row : chat->messages().rows()) {
            if (row.role == ChatMessage::Role::Assistant)
                texts << row.text;
        }
        return texts;
    }
    QStringList noteRows() const
    {
        QStringList texts;
        for (const ChatMessage &row : chat->messages().rows()) {
            if (row.role == ChatMessage::Role::Activity)
                texts << row.text;
        }
        return texts;
    }
};

QString argumentAfter(const QStringList &arguments, const QString &flag)
{
    const qsizetype at = arguments.indexOf(flag);
    return at < 0 ? QString() : arguments.value(at + 1);
}

Scenario asking(const QJsonObject &request = {})
{
    return Scenario().user().init().ask(u"r1"_s, u"Bash"_s, {{u"command"_s, u"make"_s}}, request,
                                        Scenario().result(u"allowed"_s), Scenario().result(u"denied"_s));
}

QJsonObject task(const QString &subtype)
{
    return {{u"type"_s, u"system"_s}, {u"subtype"_s, subtype}, {u"task_id"_s, u"b"_s}};
}

} // namespace

class SessionWithAgentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void turnsResumeTheConversationInTheOrderOfTheQueue()
    {
        SessionDesk d(
            {Scenario().turn(u"first"_s), Scenario().turn(u"second"_s), Scenario().turn(u"third"_s)});
        d.chat->setEffort(AgentEffort::Ultracode);
        d.watchEnd();
        d.chat->send(u"one"_s);
        d.chat->send(u"two"_s);
        d.chat->send(u"three"_s);
        QTRY_COMPARE(d.answers(), (QStringList {u"first"_s, u"second"_s, u"third"_s}));
        QTRY_VERIFY(!d.chat->isRunning());
        QCOMPARE(d.finished, 1); // asked for once
        QVERIFY(d.success);
        QCOMPARE(d.agent.runCount(), 3);
        QVERIFY(!d.agent.argumentsOf(1).contains(u"--resume"_s));
        QCOMPARE(argumentAfter(d.agent.argumentsOf(3), u"--resume"_s), d.chat->sessionId());
        QCOMPARE(argumentAfter(d.agent.argumentsOf(1), u"--effort"_s), u"max"_s);
        QVERIFY(d.agent.inputOf(2).contains(R"("ultracode\n\ntwo")"));
        QTRY_VERIFY(!d.chat->childIsRunning());
        QVERIFY(d.chat->streamObservation().droppedLines() == 0);
    }

    void permissionRoads_data()
    {
        QTest::addColumn<int>("choice");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("permanent");
        QTest::newRow("once") << int(PermissionChoice::Once) << u"allowed"_s << false;
        QTest::newRow("always") << int(PermissionChoice::Always) << u"allowed"_s << true;
        QTest::newRow("deny") << int(PermissionChoice::Deny) << u"denied"_s << false;
    }

    void permissionRoads()
    {
        QFETCH(int, choice);
        QFETCH(QString, answer);
        QFETCH(bool, permanent);
        SessionDesk d({asking({{u"permission_suggestions"_s,
                                QJsonArray {QJsonObject {{u"type"_s, u"addRules"_s},
                                                         {u"behavior"_s, u"allow"_s},
                                                         {u"destination"_s, u"userSettings"_s}}}}})});
        int waits = 0;
        d.chat->onPermissionWait = [&](const PermissionRequest &) { ++waits; };
        d.chat->send(u"go"_s);
        QTRY_VERIFY(d.chat->pendingPermission());
        QCOMPARE(waits, 1);
        QCOMPARE(d.chat->currentActivity(), u"권한 승인 대기 중…"_s);
        const QByteArray input = d.chat->pendingPermission()->rawInputJSON;
        d.chat->respondToPermission(PermissionChoice(choice));
        QTRY_COMPARE(d.lastText(), answer);
        const QByteArray sent = d.agent.inputOf(1);
        QCOMPARE(sent.contains("\"updatedInput\":" + input), answer == u"allowed");
        QCOMPARE(sent.contains("localSettings"), permanent);
    }

    void aRequestThatGoesLeavesANote()
    {
        const QJsonObject second {{u"type"_s, u"control_request"_s},
                                  {u"request_id"_s, u"r2"_s},
                                  {u"request"_s,
                                   QJsonObject {{u"subtype"_s, u"can_use_tool"_s},
                                                {u"tool_name"_s, u"Write"_s},
                                                {u"input"_s, QJsonObject()}}}};
        QJsonObject first = second;
        first.insert(u"request_id"_s, u"r1"_s);
        SessionDesk d({Scenario()
                           .user()
                           .init()
                           .write(first)
                           .write(second)
                           .expect({{u"type"_s, u"control_response"_s}})
                           .write({{u"type"_s, u"control_cancel_request"_s}, {u"request_id"_s, u"r2"_s}})
                           .result(u"over"_s)});
        d.chat->send(u"go"_s);
        QTRY_COMPARE(d.lastText().isEmpty(), false);
        QTRY_VERIFY(!d.chat->isRunning());
        QCOMPARE(
            d.noteRows(),
            (QStringList {
                u"ℹ️ 새 요청이 와서 앞의 요청은 자동으로 거부되었습니다 — Write"_s,
                u"ℹ️ 에이전트가 권한 요청을 거둬들였습니다 — Write"_s}));
        QVERIFY(d.agent.inputOf(1).contains("새 권한 요청으로 대체됨"));
    }

    void questionsAreAnsweredOnTheForm()
    {
        const QJsonArray questions {QJsonObject {
            {u"question"_s, u"Which?"_s}, {u"options"_s, QJsonArray {QJsonObject {{u"label"_s, u"A"_s}}}}}};
        SessionDesk d({Scenario().user().init().question(u"q1"_s, questions).result(u"thanks"_s)});
        d.chat->send(u"go"_s);
        QTRY_VERIFY(d.chat->pendingQuestion());
        d.chat->respondToQuestion({{{u"A"_s}, u"and B"_s}});
        QTRY_COMPARE(d.lastText(), u"thanks"_s);
        QVERIFY(d.agent.inputOf(1).contains(R"("Which?":"A, and B")"));
    }

    void nobodyIsAskedInAnUnattendedRun()
    {
        const QJsonArray questions {QJsonObject {{u"question"_s, u"Which?"_s}}};
        SessionDesk d({Scenario().user().init().question(u"q1"_s, questions).result(u"alone"_s)});
        QString skipped;
        d.chat->onUnattendedQuestionSkip = [&](const QString &text) { skipped = text; };
        d.chat->sendProgrammatic(u"go"_s);
        QTRY_VERIFY(d.answers().contains(u"alone"_s));
        QVERIFY(!skipped.isEmpty());
        QCOMPARE(d.noteRows().size(), 1);
        QVERIFY(!d.agent.argumentsOf(1).contains(u"--permission-prompt-tool"_s));
    }

    void interruptKeepsWhatWasSaid_data()
    {
        QTest::addColumn<QString>("said");
        QTest::addColumn<QString>("row");
        QTest::newRow("text") << u"half a"_s << u"half a"_s;
        QTest::newRow("nothing yet") << QString() << u"(중단됨)"_s;
    }

    void interruptKeepsWhatWasSaid()
    {
        QFETCH(QString, said);
        Scenario run;
        run.user().init({{u"capabilities"_s, QJsonArray {u"interrupt_receipt_v1"_s}}});
        if (!said.isEmpty())
            run.say(said);
        run.pause(20000);
        SessionDesk d({run});
        QVERIFY(!d.chat->softInterrupt());
        d.chat->send(u"go"_s);
        QTRY_VERIFY(d.chat->canInterrupt());
        QTRY_COMPARE(d.lastText(), said);
        QVERIFY(d.chat->softInterrupt());
        QCOMPARE(d.chat->currentActivity(), u"중단하는 중…"_s);
        QTRY_VERIFY(!d.chat->isRunning());
        QTEST(d.lastText(), "row");
        QVERIFY(!d.chat->lastRunHadErrorResult());
        QVERIFY(!d.chat->stoppedByUser());
    }

    void anInterruptEndsTheSubagentsThatTheTurnWaitedFor()
    {
        const QJsonObject call {{u"type"_s, u"tool_use"_s},
                                {u"id"_s, u"t1"_s},
                                {u"name"_s, u"Agent"_s},
                                {u"input"_s, QJsonObject {{u"description"_s, u"look"_s}}}};
        SessionDesk d({Scenario()
                           .user()
                           .init({{u"capabilities"_s, QJsonArray {u"interrupt_receipt_v1"_s}}})
                           .write({{u"type"_s, u"assistant"_s},
                                   {u"message"_s, QJsonObject {{u"content"_s, QJsonArray {call}}}}})
                           .pause(20000)});
        d.chat->send(u"go"_s);
        QTRY_VERIFY(d.chat->canInterrupt() && d.chat->hasRunningBackgroundTask());
        QVERIFY(d.chat->softInterrupt());
        QTRY_VERIFY(!d.chat->isRunning());
        QVERIFY(!d.chat->hasRunningBackgroundTask());
        QCOMPARE(d.chat->backgroundTasks().tasks().first().endWord, u"stopped"_s);
        QTRY_VERIFY(!d.chat->childIsRunning()); // nothing keeps it
    }

    void stopEndsTheChildAndTheNextMessageStartsAnother()
    {
        SessionDesk d({Scenario().user().init().say(u"half"_s).pause(20000), Scenario().turn(u"again"_s)});
        d.watchEnd();
        d.chat->send(u"go"_s);
        QTRY_COMPARE(d.lastText(), u"half"_s);
        d.chat->send(u"queued"_s);
        d.chat->stop();
        QCOMPARE(d.finished, 1);
        QVERIFY(!d.success);
        QVERIFY(!d.chat->isRunning());
        d.chat->send(u"more"_s);
        QTRY_COMPARE(d.answers(), (QStringList {u"half"_s, u"again"_s}));
    }

    void aConversationThatWasNotKeptBeginsAnew()
    {
        const Scenario unknown = Scenario().standardError(u"no such conversation"_s).exit(1);
        SessionDesk d({Scenario().user().init().pause(20000), unknown, Scenario().turn(u"again"_s), unknown});
        d.chat->send(u"go"_s);
        QTRY_VERIFY(!d.chat->sessionId().isEmpty());
        d.chat->stop();
        d.chat->send(u"more"_s);
        QTRY_COMPARE(d.answers(), QStringList {u"again"_s});
        QVERIFY(d.agent.argumentsOf(2).contains(u"--resume"_s));
        QVERIFY(!d.agent.argumentsOf(3).contains(u"--resume"_s));
        QCOMPARE(d.noteRows().size(), 1);
        // What has been answered once is kept: its loss is said, and nothing is begun behind the person's
        // back.
        QTRY_VERIFY(!d.chat->isRunning());
        d.chat->send(u"and more"_s);
        QTRY_COMPARE(d.lastText(), u"(응답 없음)"_s);
        QCOMPARE(d.agent.runCount(), 4);
        QVERIFY(d.agent.argumentsOf(4).contains(u"--resume"_s));
    }

    void aChildThatStaysBehindItsTurnIsSentAway()
    {
        SessionDesk d({Scenario().turn(u"first"_s).pause(300'000), Scenario().turn(u"second"_s)});
        d.chat->send(u"one"_s);
        d.chat->send(u"two"_s); // the first child does not end with its input
        QTRY_COMPARE(d.answers(), (QStringList {u"first"_s, u"second"_s}));
        QTRY_VERIFY(::kill(static_cast<pid_t>(d.agent.run(1)[u"pid"].toInteger()), 0) != 0);
        QVERIFY(d.chat->lastError().isEmpty());
    }

    void stopBeforeTheProgramIsFound()
    {
        ExecutableLocator searching;
        ProjectChat chat(QUuid::createUuid(), u"p"_s, QDir::tempPath(), u"t"_s, {}, {.locator = &searching});
        chat.send(u"go"_s);
        QCOMPARE(chat.currentActivity(), u"시작 중…"_s);
        chat.stop();
        QTRY_VERIFY(searching.isResolved());
        QVERIFY(!chat.isRunning());
        QCOMPARE(chat.messages().rows().size(), 1);
        QVERIFY(chat.lastError().isEmpty());
    }

    void aStartThatFails_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("text");
        QTest::newRow("not installed") << QString() << u"claude 실행 파일을 찾지 못했습니다."_s;
        QTest::newRow("gone since") << u"/nonexistent/claude"_s << u"claude 실행 실패: "_s;
    }

    void aStartThatFails()
    {
        QFETCH(QString, program);
        QFETCH(QString, text);
        ExecutableLocator locator(program);
        ProjectChat chat(QUuid::createUuid(), u"p"_s, QDir::tempPath(), u"t"_s, {}, {.locator = &locator});
        bool success = true;
        chat.onRunFinished = [&](bool ok) { success = ok; };
        chat.send(u"go"_s);
        QTRY_VERIFY(!chat.isRunning());
        const ChatMessage row = chat.messages().rows().last();
        QVERIFY2(row.text.startsWith(text), qPrintable(row.text));
        QVERIFY(row.isError && !row.streaming && !success);
        QCOMPARE(chat.lastError(), row.text);
    }

    void aChildThatDies_data()
    {
        QTest::addColumn<bool>("spoke");
        QTest::newRow("in the middle") << true;
        QTest::newRow("at once, with the reason on standard error only") << false;
    }

    void aChildThatDies()
    {
        QFETCH(bool, spoke);
        Scenario run;
        if (spoke)
            run.user().init().say(u"half"_s).dieBySignal(u"KILL"_s);
        else
            run.standardError(u"bad flag"_s).exit(1);
        SessionDesk d({run});
        d.chat->send(u"go"_s);
        QTRY_VERIFY(!d.chat->isRunning());
        QCOMPARE(d.lastText(), spoke ? u"half"_s : u"(응답 없음)"_s);
        QCOMPARE(d.chat->messages().rows().last().isError, !spoke);
        QCOMPARE(d.chat->streamObservation().stderrLines, spoke ? 0 : 1);
        QCOMPARE(d.notes.contains(u"[p] claude stderr: bad flag"_s), !spoke);
        QVERIFY(!d.chat->childIsRunning());
    }

    void backgroundWorkKeepsTheChild()
    {
        SessionDesk d({Scenario()
                           .user()
                           .init()
                           .write(task(u"task_started"_s))
                           .result(u"started"_s)
                           .user(u"still there?"_s)
                           .init()
                           .result(u"yes"_s)
                           .write(task(u"task_notification"_s))
                           .init()
                           .say(u"it is done"_s)
                           .result(u"it is done"_s)});
        d.chat->setPermissionMode(AgentPermissionMode::Plan);
        d.chat->send(u"go"_s);
        QTRY_COMPARE(d.lastText(), u"started"_s);
        QTRY_VERIFY(!d.chat->isRunning());
        QVERIFY(d.chat->childIsRunning());
        QVERIFY(d.chat->hasRunningBackgroundTask());
        QVERIFY(!d.chat->stalePermissionMode());
        d.chat->setPermissionMode(AgentPermissionMode::Full);
        QCOMPARE(d.chat->stalePermissionMode(), AgentPermissionMode::Plan);
        d.chat->send(u"still there?"_s);
        QTRY_COMPARE(d.answers(), (QStringList {u"started"_s, u"yes"_s, u"it is done"_s}));
        QCOMPARE(d.agent.runCount(), 1);
        QTRY_VERIFY(!d.chat->childIsRunning()); // nothing keeps it any more
        QVERIFY(!d.chat->stalePermissionMode());
        QVERIFY(!d.chat->hasRunningBackgroundTask());
    }

    void aMessageSentIntoTheChildsOwnTurnHasItsOwn()
    {
        const Scenario asks = Scenario().ask(u"r1"_s, u"Bash"_s, {{u"command"_s, u"make"_s}}, {},
                                             Scenario().result(u"allowed"_s), Scenario().result(u"denied"_s));
        Scenario run;
        run.user()
            .init()
            .write(task(u"task_started"_s))
            .result(u"started"_s)
            .write(task(u"task_notification"_s))
            .init()
            .say(u"it is done"_s)
            .user(u"and now?"_s)
            .result(u"it is done"_s, {{u"origin"_s, QJsonObject {{u"kind"_s, u"task-notification"_s}}}})
            .init()
            .repeat(1, asks);
        SessionDesk d({run});
        d.chat->send(u"go"_s);
        QTRY_COMPARE(d.answers(), (QStringList {u"started"_s, u"it is done"_s}));
        d.watchEnd();
        d.chat->send(u"and now?"_s);
        QTRY_VERIFY(d.chat->pendingPermission());
        QVERIFY(d.chat->isRunning());
        d.chat->respondToPermission(PermissionChoice::Once);
        QTRY_VERIFY(!d.chat->isRunning());
        QCOMPARE(d.answers(), (QStringList {u"started"_s, u"it is done"_s, u"allowed"_s}));
        QCOMPARE(d.finished, 1);
        QCOMPARE(d.agent.runCount(), 1);
    }

    void aChildThatHangsOnItsWayOutIsEnded()
    {
        SessionDesk d({Scenario().turn(u"first"_s).waitEof().pause(300'000), Scenario().turn(u"second"_s)});
        d.chat->send(u"one"_s);
        QTRY_COMPARE(d.answers(), QStringList {u"first"_s});
        QTRY_VERIFY(!d.chat->isRunning());
        const auto hanging = static_cast<pid_t>(d.agent.run(1).value(u"pid"_s).toInteger());
        QVERIFY(hanging > 0 && ::kill(hanging, 0) == 0);
        d.chat->send(u"two"_s);
        QTRY_COMPARE(d.agent.runCount(), 2);
        QVERIFY2(::kill(hanging, 0) != 0, "two children on one conversation");
        QTRY_COMPARE(d.answers(), (QStringList {u"first"_s, u"second"_s}));
    }

    void aKeptChildThatDiesLeavesNothingOpen()
    {
        const QJsonObject request {{u"type"_s, u"control_request"_s},
                                   {u"request_id"_s, u"r1"_s},
                                   {u"request"_s,
                                    QJsonObject {{u"subtype"_s, u"can_use_tool"_s},
                                                 {u"tool_name"_s, u"Bash"_s},
                                                 {u"input"_s, QJsonObject()}}}};
        SessionDesk d({Scenario()
                           .user()
                           .init()
                           .write(task(u"task_started"_s))
                           .write(request)
                           .result(u"x"_s)
                           .pause(300)
                           .exit(1)});
        d.chat->send(u"go"_s);
        QTRY_VERIFY(!d.chat->isRunning());
        QVERIFY(d.chat->pendingPermission()); // the background work still waits for it
        QTRY_VERIFY(!d.chat->childIsRunning());
        QVERIFY(!d.chat->pendingPermission());
        QVERIFY(!d.chat->hasRunningBackgroundTask());
    }

    void anotherModeThanAskedForIsSaidOnce()
    {
        SessionDesk d({Scenario()
                           .user()
                           .init({{u"permissionMode"_s, u"default"_s}})
                           .init({{u"permissionMode"_s, u"default"_s}})
                           .result(u"ok"_s)});
        d.chat->setPermissionMode(AgentPermissionMode::Auto);
        d.chat->send(u"go"_s);
        QTRY_VERIFY(!d.chat->isRunning());
        QCOMPARE(
            d.noteRows(),
            QStringList {
                u"ℹ️ Claude가 Auto 권한 모드를 안 받았습니다 — 이 세션은 Manual로 돕니다."_s});
    }

    void storeKeepsOpeningOrder()
    {
        SessionDesk d({Scenario().turn(u"x"_s)});
        ProjectChat *other =
            d.store.newSession({.alias = u"q"_s, .path = u"/"_s, .extraEnv = {}, .colorHex = {}});
        ProjectChat *second =
            d.store.newSession({.alias = u"p"_s, .path = u"/"_s, .extraEnv = {}, .colorHex = {}});
        QCOMPARE(second->title(), u"Session 2"_s);
        QCOMPARE(other->title(), u"Session 1"_s);
        QCOMPARE(d.store.sessions(u"p"_s), (QList<ProjectChat *> {d.chat, second}));
        QSignalSpy removed(&d.store, &AgentSessionStore::sessionAboutToBeRemoved);
        d.store.removeSessions(u"p"_s);
        QCOMPARE(removed.size(), 2);
        QCOMPARE(d.store.sessions(), QList<ProjectChat *> {other});
        QVERIFY(!d.store.session(second->id()));
    }
};

VESK_TEST(SessionWithAgentTest)

#include "SessionWithAgentTest.moc"
