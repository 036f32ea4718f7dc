// A day at the window, from the first project to the next start, by keys and the mouse alone. The agent is a
// real process; what came of it is read from the window, from the agent's own record and from the disk.
#include "sessions/ProjectChat.h"
#include "support/PastConversations.h"
#include "support/ScriptedAgent.h"
#include "support/TestRegistry.h"
#include "ui/controls/Theme.h"
#include "ui/shell/Workspace.h"
#include "ui/Theatre.h"

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QMimeData>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;
using Test::PastConversations;
using Test::Scenario;
using Test::ScriptedAgent;
using Test::ShellStage;
using Test::Theatre;

namespace
{

constexpr auto dayCtrl = Qt::ControlModifier;
constexpr auto dayCtrlShift = Qt::ControlModifier | Qt::ShiftModifier;
constexpr auto dayAltShift = Qt::AltModifier | Qt::ShiftModifier;

// The first messages, which name the sessions.
const QString mendText = u"mend @src/refund.cpp"_s;
const QString releaseText = u"watch the release"_s;
const QString countText = u"count the rows"_s;

QJsonObject dayTaskLine(const QString &subtype, const QString &id, QJsonObject line)
{
    line.insert(u"type"_s, u"system"_s);
    line.insert(u"subtype"_s, subtype);
    line.insert(u"task_id"_s, id);
    return line;
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &bytes = {})
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

} // namespace

class DayTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const auto environment = m_agent.environment();
        for (const QString &name : {u"SCRIPTED_AGENT_SCENARIO"_s, u"SCRIPTED_AGENT_RECORD"_s})
            qputenv(name.toLatin1(), environment.value(name).toUtf8());
        const Scenario thinking = Scenario().user().init().say(u"길게 생각합니다."_s).waitForFile(u"/none"_s);
        const Scenario answering = Scenario().turn(u"했습니다."_s);
        m_agent.setRuns({mending(), thinking, answering, releasing(), counting(), answering});
        writeFile(m_project + u"/src/refund.cpp"_s, "int refund();\n");
        writeFile(m_project + u"/notes.txt"_s, "notes\n");
        writeFile(m_project + u"/plan.txt"_s, "plan\n");
    }

    void cleanupTestCase()
    {
        m_theatre.reset();
        for (const char *name : {"SCRIPTED_AGENT_SCENARIO", "SCRIPTED_AGENT_RECORD"})
            qunsetenv(name);
        QDir(QDir::homePath() + u"/.claude"_s).removeRecursively();
        QGuiApplication::clipboard()->clear();
        Theme::shared().setMode(u"system"_s);
    }

    void aDay()
    {
        m_stage.runtime().start();
        m_theatre = std::make_unique<Theatre>(m_stage);
        Workspace &workspace = m_theatre->workspace();
        for (QAbstractItemModel *model : std::initializer_list<QAbstractItemModel *> {
                 workspace.tabs(), workspace.sidebar(), workspace.myTurn(), workspace.panes()})
            new QAbstractItemModelTester(model, QAbstractItemModelTester::FailureReportingMode::QtTest,
                                         model);
        const auto steps = {&DayTest::registersAProject,
                            &DayTest::writesAMessage,
                            &DayTest::answersWhatIsAsked,
                            &DayTest::queuesAndInterrupts,
                            &DayTest::opensSessionsSideBySide,
                            &DayTest::goesWhereItIsWaitedFor,
                            &DayTest::looksAtBackgroundWork,
                            &DayTest::readsWhatHasEnded,
                            &DayTest::resumesAConversation,
                            &DayTest::throwsOneAway,
                            &DayTest::startsAgain};
        for (const auto step : steps) {
            (this->*step)();
            if (QTest::currentTestFailed())
                return;
            m_theatre->picture(u"day-%1"_s.arg(++m_picture));
            QCOMPARE(m_theatre->warnings(), QStringList());
        }
    }

private:
    // What the agent does in each of the sessions.

    [[nodiscard]] static Scenario mending()
    {
        const QJsonObject question {
            {u"question"_s, u"시험도 고칠까요?"_s},
            {u"header"_s, u"시험"_s},
            {u"options"_s,
             QJsonArray {QJsonObject {{u"label"_s, u"예"_s}}, QJsonObject {{u"label"_s, u"아니요"_s}}}},
            {u"multiSelect"_s, false}};
        return Scenario()
            .user()
            .init()
            .say(u"먼저 읽어 봅니다."_s)
            .tool(u"Read"_s, {{u"file_path"_s, u"src/refund.cpp"_s}}, u"int refund();"_s)
            .ask(u"r1"_s, u"Bash"_s, {{u"command"_s, u"make test"_s}})
            .question(u"r2"_s, {question})
            .result(u"고쳤습니다."_s);
    }

    [[nodiscard]] Scenario releasing() const
    {
        const auto agent = [](int index, const QString &state) {
            return QJsonObject {{u"type"_s, u"workflow_agent"_s},
                                {u"index"_s, index},
                                {u"label"_s, u"점검 %1"_s.arg(index)},
                                {u"phaseIndex"_s, 1},
                                {u"state"_s, state}};
        };
        const QJsonObject phase {{u"type"_s, u"workflow_phase"_s}, {u"index"_s, 1}, {u"title"_s, u"조사"_s}};
        return Scenario()
            .user()
            .init()
            .write(dayTaskLine(u"task_started"_s, u"a1"_s,
                               {{u"description"_s, u"문서 훑기"_s}, {u"task_type"_s, u"local_agent"_s}}))
            .write(dayTaskLine(
                u"task_progress"_s, u"w1"_s,
                {{u"workflow_name"_s, u"release-check"_s},
                 {u"description"_s, u"출시 전 점검"_s},
                 {u"workflow_progress"_s, QJsonArray {phase, agent(1, u"done"_s), agent(2, u"running"_s)}}}))
            .ask(u"r3"_s, u"Bash"_s, {{u"command"_s, u"git push"_s}})
            .result(u"밀지 않았습니다."_s)
            .waitForFile(m_agent.home() + u"/release-over"_s)
            .write(dayTaskLine(u"task_notification"_s, u"a1"_s, {{u"status"_s, u"completed"_s}}))
            .write(dayTaskLine(u"task_notification"_s, u"w1"_s, {{u"status"_s, u"completed"_s}}));
    }

    [[nodiscard]] Scenario counting() const
    {
        return Scenario()
            .user()
            .init()
            .waitForFile(m_agent.home() + u"/count-over"_s)
            .say(u"모두 42줄입니다."_s)
            .result(u"모두 42줄입니다."_s);
    }

    // The day.

    void registersAProject()
    {
        QVERIFY(m_theatre->shows(u"프로젝트 폴더를 추가하면 여기에서 세션을 시작합니다"_s));
        press(Qt::Key_O, dayCtrl);
        QTRY_VERIFY(m_theatre->shows(u"프로젝트 폴더 추가"_s));
        m_theatre->type(m_project);
        press(Qt::Key_Return);
        QTRY_VERIFY(!m_theatre->shows(u"프로젝트 폴더 추가"_s));
        QVERIFY(m_theatre->sidebarRow(u"billing"_s));
        QVERIFY(bytesOf(m_stage.path(u"projects.json"_s)).contains(m_project.toUtf8()));
    }

    void writesAMessage()
    {
        press(Qt::Key_N, dayCtrl);
        QTRY_VERIFY(m_theatre->composer());
        m_theatre->type(u"mend @refu"_s);
        QTRY_COMPARE(completions(), 1);
        press(Qt::Key_Tab);
        QTRY_COMPARE(draft(), mendText + u' ');
        auto *copied = new QMimeData;
        copied->setUrls({QUrl::fromLocalFile(m_project + u"/notes.txt"_s)});
        QGuiApplication::clipboard()->setMimeData(copied);
        press(Qt::Key_V, dayCtrl);
        QTRY_VERIFY(m_theatre->shows(u"notes.txt"_s));
        QMimeData dragged;
        dragged.setUrls({QUrl::fromLocalFile(m_project + u"/plan.txt"_s)});
        QVERIFY(Test::drop(*m_theatre->window(), dragged, m_theatre->inPane(0, 0.5, 0.4)));
        QTRY_VERIFY(m_theatre->shows(u"plan.txt"_s));
        press(Qt::Key_Return);
        QTRY_VERIFY(m_agent.inputOf(1).endsWith('\n'));
        for (const QString &said : {mendText, m_project + u"/notes.txt"_s, m_project + u"/plan.txt"_s})
            QVERIFY2(m_agent.inputOf(1).contains(said.toUtf8()), qPrintable(said));
        QCOMPARE(draft(), QString());
        QVERIFY(m_theatre->tab(mendText) && m_theatre->sidebarRow(mendText));
    }

    void answersWhatIsAsked()
    {
        QTRY_VERIFY(m_theatre->shows(u"한 번 허용"_s));
        QVERIFY(m_theatre->shows(u"make test"_s));
        press(Qt::Key_1, Qt::AltModifier);
        QTRY_VERIFY(m_agent.inputOf(1).contains("\"allow\""));
        QTRY_VERIFY(m_theatre->shows(u"시험도 고칠까요?"_s));
        press(Qt::Key_Backtab, Qt::ShiftModifier); // out of the composer, into the form
        press(Qt::Key_2);
        QTRY_VERIFY(m_theatre->shows(u"1개 중 1개 답함"_s));
        press(Qt::Key_Return, dayCtrl);
        QTRY_VERIFY(m_agent.inputOf(1).contains("아니요"));
        QTRY_COMPARE(stateOf(m_theatre->sidebarRow(mendText)), SessionState::Idle);
        QVERIFY(m_theatre->shows(u"도구 3개"_s) && !m_theatre->withName(u"streamCaret"_s));
        QTRY_VERIFY(m_theatre->composer());
    }

    void queuesAndInterrupts()
    {
        m_theatre->type(u"/rev"_s);
        QTRY_COMPARE(completions(), 1);
        press(Qt::Key_Return);
        QTRY_COMPARE(draft(), u"/review "_s);
        send(u"it all"_s);
        QTRY_VERIFY(m_agent.inputOf(2).contains("/review it all"));
        QTRY_VERIFY(chat().canInterrupt());
        send(u"then write"_s);
        send(u"then push"_s);
        QCOMPARE(chat().pendingLocalSends().size(), 2);
        m_theatre->click(u"<b>2건</b>, 현재 턴이 끝나면 이어 전송됩니다"_s);
        QTRY_VERIFY(m_theatre->shows(u"then push"_s));
        m_theatre->click(u"컴포저로 되돌려 고치기"_s);
        QTRY_COMPARE(draft(), u"then write"_s);
        send(u" the tests"_s);
        QCOMPARE(chat().pendingLocalSends().size(), 2);
        m_theatre->click(u"이 메시지 보내지 않기"_s); // the one that was written first, "then push"
        QCOMPARE(chat().pendingLocalSends().size(), 1);
        press(Qt::Key_Escape);
        QTRY_VERIFY(m_agent.inputOf(3).contains("then write the tests"));
        QTRY_VERIFY(!chat().isRunning());
    }

    void opensSessionsSideBySide()
    {
        press(Qt::Key_Backslash, dayCtrl);
        press(Qt::Key_Backslash, dayCtrlShift);
        const QString second = u"Session 2"_s, third = u"Session 3"_s;
        QCOMPARE(m_theatre->panes(), mendText + u"*|"_s + second + u"*|>"_s + third + u'*');
        press(Qt::Key_Left, dayAltShift);
        QCOMPARE(m_theatre->panes(), u">"_s + mendText + u' ' + third + u"*|"_s + second + u'*');
        m_theatre->drag(Test::centreOf(*m_theatre->tab(second)), m_theatre->inPane(0, 0.5, 0.5));
        QTRY_COMPARE(m_theatre->panes(), u">"_s + mendText + u' ' + third + u' ' + second + u'*');
    }

    void goesWhereItIsWaitedFor()
    {
        QTRY_VERIFY(m_theatre->composer());
        send(releaseText);
        press(Qt::Key_1, dayCtrl);
        QTRY_COMPARE(chat().title(), mendText);
        QTRY_COMPARE(stateOf(m_theatre->tab(releaseText)), SessionState::WaitApproval);
        QCOMPARE(stateOf(m_theatre->sidebarRow(releaseText)), SessionState::WaitApproval);
        QCOMPARE(m_theatre->window()->title(), u"(1) 내 차례 — Vesk"_s);
        m_theatre->click(m_theatre->tab(releaseText));
        QTRY_VERIFY(m_theatre->shows(u"git push"_s));
        press(Qt::Key_3, Qt::AltModifier);
        QTRY_VERIFY(m_agent.inputOf(4).contains("\"deny\""));
        QTRY_COMPARE(stateOf(m_theatre->sidebarRow(releaseText)), SessionState::Background);
    }

    void looksAtBackgroundWork()
    {
        press(Qt::Key_B, dayCtrl);
        for (const QString &text : {u"문서 훑기"_s, u"release-check"_s, u"1 조사"_s, u"점검 2"_s})
            QTRY_VERIFY(m_theatre->shows(text));
        m_theatre->picture(u"day-background"_s);
        writeFile(m_agent.home() + u"/release-over"_s);
        QTRY_COMPARE(stateOf(m_theatre->sidebarRow(releaseText)), SessionState::Idle);
        press(Qt::Key_Escape);
        QVERIFY(!m_theatre->shows(u"release-check"_s));
        QTRY_VERIFY(m_theatre->composer());
    }

    void readsWhatHasEnded()
    {
        press(Qt::Key_2, dayCtrl);
        QTRY_VERIFY(m_theatre->composer());
        send(countText);
        m_theatre->click(m_theatre->sidebarRow(mendText));
        QTRY_COMPARE(chat().title(), mendText);
        QCOMPARE(stateOf(m_theatre->tab(countText)), SessionState::Running);
        writeFile(m_agent.home() + u"/count-over"_s);
        QTRY_COMPARE(stateOf(m_theatre->tab(countText)), SessionState::Finished);
        QVERIFY(m_theatre->sidebarRow(countText)->property("unseen").toBool());
        m_theatre->click(m_theatre->sidebarRow(countText));
        QTRY_COMPARE(stateOf(m_theatre->tab(countText)), SessionState::Idle);
        QVERIFY(!m_theatre->sidebarRow(countText)->property("unseen").toBool());
    }

    void resumesAConversation()
    {
        // A thought that is not sent stays with its session.
        QTRY_VERIFY(m_theatre->composer());
        m_theatre->type(u"half a thought"_s);
        m_counted = chat().sessionId();
        press(Qt::Key_1, dayCtrl);
        QTRY_COMPARE(chat().title(), mendText);
        QTRY_COMPARE(draft(), QString());
        const QString mended = chat().sessionId();
        leaveTranscript(mended, mendText);
        leaveTranscript(m_counted, countText);
        press(Qt::Key_W, dayCtrl);
        QTRY_VERIFY(!m_theatre->tab(mendText));

        press(Qt::Key_R, dayCtrl);
        m_theatre->type(u"mend"_s);
        QTRY_VERIFY(m_theatre->shows(u"대화 2개 중 1개"_s));
        press(Qt::Key_Return);
        QTRY_COMPARE(chat().resumedSessionId(), mended);
        QTRY_VERIFY(m_theatre->shows(u"도구 1개"_s));
        m_theatre->click(u"도구 1개"_s);
        QTRY_VERIFY(m_theatre->shows(u"make test"_s));
        press(Qt::Key_L, dayCtrl);
        QTRY_VERIFY(m_theatre->composer());
        press(Qt::Key_Up);
        QTRY_COMPARE(draft(), mendText);
        send(u" again"_s);
        QTRY_VERIFY(m_agent.inputOf(6).contains("again"));
        QVERIFY(m_agent.argumentsOf(6).contains(mended));
        QTRY_COMPARE(chat().messages().rows().constLast().text, u"했습니다."_s);

        m_theatre->click(m_theatre->tab(countText));
        QTRY_COMPARE(draft(), u"half a thought"_s);
    }

    void throwsOneAway()
    {
        const PastConversations past(QDir::homePath(), m_project);
        past.write(u"old"_s, {PastConversations::said(u"an old matter"_s)}, 9000);
        press(Qt::Key_R, dayCtrl); // the panel is there still: what is typed takes the place of the words
        m_theatre->type(u"old"_s);
        QTRY_VERIFY(m_theatre->shows(u"대화 3개 중 1개"_s));
        press(Qt::Key_Tab);
        press(Qt::Key_Delete);
        QTRY_VERIFY(m_theatre->shows(u"대화를 휴지통으로 옮길까요?"_s));
        QVERIFY(QFile::exists(past.path(u"old"_s)));
        m_theatre->click(u"휴지통으로"_s);
        QTRY_VERIFY(!QFile::exists(past.path(u"old"_s)));
        // The list has the keys again, and the window its own once the question has faded.
        QTRY_VERIFY(m_theatre->window()->activeFocusItem()->inherits("QQuickListView"));
        QTRY_VERIFY(!m_theatre->shows(u"대화를 휴지통으로 옮길까요?"_s));
        QVERIFY(QFile::exists(qEnvironmentVariable("XDG_DATA_HOME") + u"/Trash/files/old.jsonl"_s));
    }

    void startsAgain()
    {
        press(Qt::Key_Escape); // the words go first, then the panel
        press(Qt::Key_Escape);
        QTRY_VERIFY(m_theatre->composer());
        press(Qt::Key_Comma, dayCtrl);
        QTRY_VERIFY(m_theatre->shows(u"어둡게"_s));
        m_theatre->click(u"어둡게"_s);
        press(Qt::Key_Escape);
        QTRY_VERIFY(m_theatre->composer());
        m_theatre->window()->close();
        QTRY_VERIFY(!m_theatre->window()->isVisible());
        QCOMPARE(m_theatre->warnings(), QStringList());
        m_theatre.reset();
        Theme::shared().setMode(u"system"_s);

        m_stage.restart();
        m_stage.runtime().start();
        m_theatre = std::make_unique<Theatre>(m_stage);
        QVERIFY(Theme::shared().dark());
        QVERIFY(m_theatre->sidebarRow(u"billing"_s));
        // What was said in the session of the release left no record on the disk.
        QTRY_COMPARE(m_theatre->panes(), u'>' + countText + u"* "_s + mendText);
        QCOMPARE(chat().resumedSessionId(), m_counted);
        QTRY_COMPARE(draft(), u"half a thought"_s);
    }

    void press(int key, Qt::KeyboardModifiers modifiers = {}) { m_theatre->press(key, modifiers); }

    void send(const QString &text)
    {
        m_theatre->type(text);
        press(Qt::Key_Return);
        QCOMPARE(draft(), QString());
    }

    [[nodiscard]] ProjectChat &chat() const { return *m_theatre->workspace().currentChat(); }

    /** What stands in the composer that has the keyboard. */
    [[nodiscard]] QString draft() const
    {
        const QQuickItem *composer = m_theatre->composer();
        return composer ? composer->property("text").toString() : u"(no composer)"_s;
    }

    [[nodiscard]] int completions() const
    {
        const QQuickItem *list = m_theatre->withName(u"completions"_s);
        return list ? list->property("count").toInt() : 0;
    }

    /** Of a tab or a row of the sidebar. */
    [[nodiscard]] static SessionState stateOf(const QQuickItem *item)
    {
        return item ? SessionState(item->property("sessionState").toInt()) : SessionState::Failed;
    }

    /** What the agent would have written of a conversation. */
    void leaveTranscript(const QString &id, const QString &said) const
    {
        PastConversations(QDir::homePath(), m_project)
            .write(id,
                   {PastConversations::said(said),
                    PastConversations::called(u"t1"_s, u"Bash"_s, u"make test"_s),
                    PastConversations::returned(u"t1"_s, u"ok"_s, false),
                    PastConversations::answered(u"고쳤습니다."_s)});
    }

    // Its own: what other tests leave in theirs would be offered too.
    const QString m_project = QDir::homePath() + u"/day/billing"_s;
    ScriptedAgent m_agent;
    ShellStage m_stage {m_agent.program()};
    std::unique_ptr<Theatre> m_theatre;
    QString m_counted;
    int m_picture = 0;
};

VESK_TEST(DayTest)
#include "DayTest.moc"
