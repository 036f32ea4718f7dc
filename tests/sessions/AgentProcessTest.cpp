#include "sessions/AgentProcess.h"

#include "support/ScriptedAgent.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTimer>
#include <QtTest>

#include <algorithm>
#include <csignal>

using namespace Qt::StringLiterals;
using namespace Vesk;
using namespace Vesk::Test;
using namespace std::chrono_literals;

namespace
{

constexpr int limitMs = 60'000;

// A child with everything that it said; it fails the test when its callbacks come in a wrong state.
class Watched
{
public:
    Watched()
    {
        m_process->onStarted = [this] { note(ends.isEmpty() && started++ == 0); };
        m_process->onLine = [this](std::string_view line) {
            note(m_process == nullptr || m_process->isRunning());
            lines.append(QString::fromUtf8(line.data(), qsizetype(line.size())));
        };
        m_process->onErrorLine = [this](const QString &line) {
            note(m_process == nullptr || m_process->isRunning());
            errorLines.append(line);
        };
        m_process->onEnded = [this](const AgentEnd &end) {
            note(ends.isEmpty());
            ends.append(end);
        };
    }

    AgentProcess *operator->() const { return m_process.get(); }
    [[nodiscard]] bool ended() const { return !ends.isEmpty(); }
    void start(const ScriptedAgent &agent)
    {
        m_process->start(
            {agent.program(), ScriptedAgent::arguments(), agent.environment(), agent.projectFolder()});
        note(ends.isEmpty() && started == 0); // nothing from inside start()
    }
    std::unique_ptr<AgentProcess> take() { return std::move(m_process); }

    QStringList lines;
    QStringList errorLines;
    QList<AgentEnd> ends;
    int started = 0;
    bool inOrder = true;

private:
    void note(bool right) { inOrder = inOrder && right; }

    std::unique_ptr<AgentProcess> m_process = std::make_unique<AgentProcess>();
};

// Ticks once in every round of the main loop.
class Heartbeat
{
public:
    Heartbeat()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            ++ticks;
            if (onTick)
                onTick();
        });
        m_timer.start(0ms);
    }

    std::function<void()> onTick;
    int ticks = 0;

private:
    QTimer m_timer;
};

bool isAlive(qint64 pid)
{
    return pid > 0 && ::kill(static_cast<pid_t>(pid), 0) == 0;
}

qsizetype openDescriptors()
{
    return QDir(u"/proc/self/fd"_s).entryList(QDir::NoDotAndDotDot | QDir::System | QDir::Files).size();
}

} // namespace

class AgentProcessTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lifeOfAChild_data();
    void lifeOfAChild();
    void failsToStart_data();
    void failsToStart();
    void setsTheChildUp();
    void takesTurnsWithTheChild();
    void endsThoughAGrandchildHoldsThePipes();
    void killsTheGroupOfAChildThatIgnoresTheRequest();
    void terminatesAsSoonAsItMay();
    void closesTheInputOfASilentChild();
    void ignoresWritesToAClosedInput();
    void keepsTheLoopAliveUnderFloods();
    void neverBlocksOnADeafChild();
    void outlivesItsOwner_data();
    void outlivesItsOwner();
    void leaksNoDescriptors();
};

void AgentProcessTest::lifeOfAChild_data()
{
    using Kind = AgentEnd::Kind;
    QTest::addColumn<Scenario>("scenario");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("code");
    const auto row = [](const char *name, const Scenario &scenario, const QStringList &lines, Kind kind,
                        int code) { QTest::newRow(name) << scenario << lines << int(kind) << code; };
    const QByteArray han = "한글\n";
    row("says nothing", Scenario().exit(0), {}, Kind::Exited, 0);
    row("exit code", Scenario().raw("a\nb\n").exit(7), {u"a"_s, u"b"_s}, Kind::Exited, 7);
    row("blank lines and CR", Scenario().raw("a\r\n\n\r\nb\n").exit(0), {u"a"_s, {}, {}, u"b"_s},
        Kind::Exited, 0);
    row("no newline at the end", Scenario().raw("a\nb").exit(0), {u"a"_s, u"b"_s}, Kind::Exited, 0);
    row("dies by a signal in mid-line", Scenario().raw("a\n{\"type\":").dieBySignal(u"SEGV"_s),
        {u"a"_s, u"{\"type\":"_s}, Kind::Killed, SIGSEGV);
    row("cut anywhere", Scenario().raw("one\ntwo\nthree\n", {1, 3, 4, 5, 9}).exit(0),
        {u"one"_s, u"two"_s, u"three"_s}, Kind::Exited, 0);
    row("cut inside a character", Scenario().raw(han, {1, 2, 4}).exit(0), {u"한글"_s}, Kind::Exited, 0);
    row("ends inside a character", Scenario().raw("a" + han.left(2)).exit(0), {u"a\uFFFD"_s}, Kind::Exited,
        0);
    row("bad UTF-8",
        Scenario()
            .raw("a\xff\xfe"
                 "b\n")
            .exit(0),
        {u"a\uFFFD\uFFFDb"_s}, Kind::Exited, 0);
}

void AgentProcessTest::lifeOfAChild()
{
    QFETCH(Scenario, scenario);
    ScriptedAgent agent;
    agent.setRun(scenario);
    Watched child;
    child.start(agent);
    QTRY_VERIFY_WITH_TIMEOUT(child.ended(), limitMs);
    QTEST(child.lines, "lines");
    QTEST(int(child.ends.first().kind), "kind");
    QTEST(child.ends.first().code, "code");
    QCOMPARE(child->state(), AgentProcess::State::Finished);
    QVERIFY(child.inOrder);
    QCOMPARE(child.started, 1);
}

void AgentProcessTest::failsToStart_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no program") << u"/nowhere/claude"_s << u"/"_s
                                << u"/nowhere/claude: No such file or directory"_s;
    QTest::newRow("no folder") << u"/bin/true"_s << u"/nowhere"_s << u"/nowhere: No such file or directory"_s;
    QTest::newRow("a folder as program") << u"/usr/bin"_s << u"/"_s << u"/usr/bin: Is a directory"_s;
    QTest::newRow("not executable") << u"/etc/passwd"_s << u"/"_s << u"/etc/passwd: Permission denied"_s;
    QTest::newRow("a file as folder")
        << u"/bin/true"_s << u"/etc/passwd"_s << u"/etc/passwd: Permission denied"_s;
    QTest::newRow("no interpreter") << u"%1/script"_s << u"/"_s << u"%1/script: No such file or directory"_s;
    QTest::newRow("no name") << QString() << u"/"_s << u": No program defined"_s;
}

void AgentProcessTest::failsToStart()
{
    QFETCH(QString, program);
    QFETCH(QString, folder);
    QFETCH(QString, reason);
    const QTemporaryDir scratch; // with a script that only the child can find to be no program
    QFile script(scratch.filePath(u"script"_s));
    QVERIFY(script.open(QIODevice::WriteOnly) && script.write("#!/nowhere/sh\n") > 0);
    script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    script.close();
    program.replace(u"%1"_s, scratch.path());
    reason.replace(u"%1"_s, scratch.path());
    Watched child;
    child->start({program, {}, QProcessEnvironment::systemEnvironment(), folder});
    QVERIFY(!child.ended());
    child->writeLine("for nobody");
    child->terminate();
    QTRY_VERIFY_WITH_TIMEOUT(child.ended(), limitMs);
    QTest::qWait(0);
    QCOMPARE(child.ends.size(), 1);
    QCOMPARE(child.ends.first().kind, AgentEnd::Kind::FailedToStart);
    QCOMPARE(child.ends.first().reason, reason);
    QCOMPARE(child.started, 0);
}

void AgentProcessTest::setsTheChildUp()
{
    // Vesk ignores these itself while it runs.
    const auto term = ::signal(SIGTERM, SIG_IGN);
    const auto interrupt = ::signal(SIGINT, SIG_IGN);
    ScriptedAgent agent;
    Watched child;
    child.start(agent);
    QTRY_COMPARE_WITH_TIMEOUT(agent.runCount(), 1, limitMs);
    (void)::signal(SIGTERM, term);
    (void)::signal(SIGINT, interrupt);
    const QJsonObject run = agent.run(1);
    QCOMPARE(run[u"cwd"].toString(), QDir(agent.projectFolder()).canonicalPath());
    QCOMPARE(run[u"pid"].toInteger(), child->processId());
    QCOMPARE(run[u"pgid"], run[u"pid"]);
    QCOMPARE(run[u"environment"][u"HOME"].toString(), agent.home());
    QCOMPARE(run[u"ignored_signals"].toArray(), QJsonArray());
    QCOMPARE(run[u"blocked_signals"].toArray(), QJsonArray());
    child->closeInput();
    QTRY_VERIFY_WITH_TIMEOUT(child.ended(), limitMs);
    QCOMPARE(child->processId(), 0);
}

void AgentProcessTest::takesTurnsWithTheChild()
{
    ScriptedAgent agent;
    agent.setRun(
        Scenario().user().write({{u"heard"_s, u"${prompt}"_s}}).user().write({{u"heard"_s, u"${prompt}"_s}}));
    Watched child;
    child.start(agent);
    child->writeLine(userMessage(u"하나"_s)); // before it has started
    QTRY_COMPARE_WITH_TIMEOUT(child.lines.size(), 1, limitMs);
    QVERIFY(child->inputIsOpen());
    child->writeLine(userMessage(u"둘"_s));
    child->closeInput();
    QVERIFY(!child->inputIsOpen());
    child->writeLine(userMessage(u"셋"_s));
    QTRY_VERIFY_WITH_TIMEOUT(child.ended(), limitMs);
    QCOMPARE(child.lines, QStringList({u"{\"heard\":\"하나\"}"_s, u"{\"heard\":\"둘\"}"_s}));
    QCOMPARE(agent.inputOf(1), userMessage(u"하나"_s) + '\n' + userMessage(u"둘"_s) + '\n');
}

void AgentProcessTest::endsThoughAGrandchildHoldsThePipes()
{
    ScriptedAgent agent;
    agent.setRun(Scenario().grandchild(300, true).raw("last words").exit(0));
    Watched child;
    child.start(agent);
    QTRY_VERIFY_WITH_TIMEOUT(child.ended(), limitMs);
    QCOMPARE(child.lines, QStringList(u"last words"_s));
    QVERIFY(isAlive(agent.grandchildOf(1)));
}

void AgentProcessTest::killsTheGroupOfAChildThatIgnoresTheRequest()
{
    ScriptedAgent agent;
    agent.setRun(
        Scenario().ignoreSigterm().grandchild(300, false).raw("ready\nhalf").waitEof().pause(300'000));
    Watched child;
    child->setKillGrace(50ms);
    child.start(agent);
    QTRY_COMPARE_WITH_TIMEOUT(child.lines.size(), 1, limitMs);
    child->terminate();
    child->terminate();
    QTRY_VERIFY_WITH_TIMEOUT(child.ended(), limitMs);
    QCOMPARE(child.ends.first().kind, AgentEnd::Kind::Killed);
    QCOMPARE(child.ends.first().code, SIGKILL);
    QCOMPARE(child.lines.last(), u"half"_s);
    // An orphan that was killed may stay a zombie where no init collects it: look at what it is.
    const auto grandchildState = [pid = agent.grandchildOf(1)] {
        QFile stat(u"/proc/%1/stat"_s.arg(pid));
        const QByteArray text = stat.open(QIODevice::ReadOnly) ? stat.readAll() : QByteArray(") X");
        return text.mid(text.lastIndexOf(')') + 2, 1);
    };
    QTRY_VERIFY_WITH_TIMEOUT(grandchildState() == "X" || grandchildState() == "Z", limitMs);
}

void AgentProcessTest::terminatesAsSoonAsItMay()
{
    Watched child;
    child->terminate(); // not started: nothing
    child->start({u"/bin/sleep"_s, {u"300"_s}, QProcessEnvironment::systemEnvironment(), u"/"_s});
    child->terminate(); // starting: kept until it has
    QTRY_VERIFY_WITH_TIMEOUT(child.ended(), limitMs);
    QCOMPARE(child.ends.first().kind, AgentEnd::Kind::Killed);
    QCOMPARE(child.ends.first().code, SIGTERM);
    child->terminate(); // ended: nothing
    QVERIFY(child.inOrder);
}

void AgentProcessTest::closesTheInputOfASilentChild()
{
    ScriptedAgent agent;
    agent.setRun(Scenario().raw("bye").closeOutput().waitEof().exit(3));
    Watched child;
    child.start(agent);
    QTRY_VERIFY_WITH_TIMEOUT(child.ended(), limitMs);
    QCOMPARE(child.lines, QStringList(u"bye"_s));
    QCOMPARE(child.ends.first().code, 3);
}

void AgentProcessTest::ignoresWritesToAClosedInput()
{
    ScriptedAgent agent;
    agent.setRun(Scenario().closeInput().raw("deaf\n").pause(300'000));
    Watched child;
    child.start(agent);
    QTRY_COMPARE_WITH_TIMEOUT(child.lines.size(), 1, limitMs);
    child->writeLine("one");
    QVERIFY(!child->inputIsOpen());
    child->writeLine("two");
    child->terminate();
    QTRY_VERIFY_WITH_TIMEOUT(child.ended(), limitMs);
    QCOMPARE(child.ends.first().code, 143);
}

void AgentProcessTest::keepsTheLoopAliveUnderFloods()
{
    ScriptedAgent agent;
    agent.setRun(Scenario().floodStandardError(100'000).flood(100 * 1024 * 1024).raw("\nafter\n").exit(0));
    Watched child;
    Heartbeat heart;
    qsizetype seen = 0;
    qsizetype mostInOneRound = 0;
    heart.onTick = [&] {
        mostInOneRound = qMax(mostInOneRound, child.errorLines.size() - seen);
        seen = child.errorLines.size();
    };
    child.start(agent);
    QTRY_VERIFY_WITH_TIMEOUT(child.ended(), 2 * limitMs);
    QCOMPARE(child.errorLines.size(), 100'000);
    QCOMPARE(child.errorLines.last(), u"complaint 100000"_s);
    QCOMPARE(child.lines.size(), 2);
    QVERIFY(child.lines.first().size() < 64 * 1024 * 1024);
    QCOMPARE(child.lines.last(), u"after"_s);
    // Two batches of 64 KiB at most: one that was announced, and one behind it.
    QVERIFY2(mostInOneRound <= 2 * 64 * 1024 / 12, qPrintable(QString::number(mostInOneRound)));
}

void AgentProcessTest::neverBlocksOnADeafChild()
{
    ScriptedAgent agent;
    agent.setRun(Scenario().deaf().raw("ready\n").pause(300'000));
    Watched child;
    child.start(agent);
    QTRY_COMPARE_WITH_TIMEOUT(child.lines.size(), 1, limitMs);
    Heartbeat heart;
    const QByteArray megabyte(1024 * 1024 - 1, 'x');
    for (int i = 0; i < 8; ++i)
        child->writeLine(megabyte);
    QTRY_VERIFY_WITH_TIMEOUT(heart.ticks > 20, limitMs);
    QCOMPARE(child->droppedInputLines(), 0);
    for (int i = 0; i < 60; ++i)
        child->writeLine(megabyte);
    QVERIFY(child->droppedInputLines() >= 4); // what is beyond 64 MiB
    QVERIFY(child->inputIsOpen());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"lines dropped"_s));
    child->terminate();
    QTRY_VERIFY_WITH_TIMEOUT(child.ended(), limitMs);
}

void AgentProcessTest::outlivesItsOwner_data()
{
    QTest::addColumn<QString>("when");
    for (const char *when :
         {"starting", "running", "in onStarted", "in onLine", "in onErrorLine", "in onEnded"})
        QTest::newRow(when) << QString::fromLatin1(when);
}

void AgentProcessTest::outlivesItsOwner()
{
    QFETCH(QString, when);
    ScriptedAgent agent;
    // Much output after the release: it must be read away, or the child would hang in its write.
    agent.setRun(
        Scenario().standardError(u"e"_s).raw("one\ntwo\nthree\n").user().flood(4'000'000).waitEof().exit(0));
    auto child = std::make_unique<Watched>();
    auto &process = *child;
    int calls = 0;
    const auto release = [&](const QString &moment) {
        if (moment == when) {
            AgentProcess::release(process.take());
            process.lines.append(u"captured values are still there"_s);
        }
    };
    process->onStarted = [&] { release(u"in onStarted"_s); };
    process->onLine = [&](std::string_view) {
        ++calls;
        release(u"in onLine"_s);
    };
    process->onErrorLine = [&](const QString &) { release(u"in onErrorLine"_s); };
    process->onEnded = [&](const AgentEnd &) { release(u"in onEnded"_s); };
    process.start(agent);
    process->writeLine(userMessage(u"go"_s));
    if (when == "starting"_L1)
        release(when);
    QTRY_COMPARE_WITH_TIMEOUT(agent.runCount(), 1, limitMs);
    const qint64 pid = agent.run(1)[u"pid"].toInteger();
    if (when == "running"_L1) {
        QTRY_VERIFY_WITH_TIMEOUT(calls == 3, limitMs);
        release(when);
    }
    if (when == "in onEnded"_L1)
        process->closeInput();
    QTRY_VERIFY_WITH_TIMEOUT(!isAlive(pid), limitMs); // ended by itself, and collected
    QTRY_COMPARE_WITH_TIMEOUT(process.lines.size(), 1, limitMs);
    if (when == "in onLine"_L1)
        QCOMPARE(calls, 1);
}

void AgentProcessTest::leaksNoDescriptors()
{
    qsizetype before = 0;
    for (int i = 0; i < 200; ++i) {
        if (i == 8) // the loop and the first children open some that stay
            before = openDescriptors();
        Watched child;
        child->start({i % 4 == 0 ? u"/nowhere"_s : u"/bin/true"_s, {}, {}, u"/"_s});
        QEventLoop loop; // quicker than looking every few milliseconds
        child->onEnded = [&](const AgentEnd &) { loop.quit(); };
        QTimer::singleShot(limitMs, &loop, [&] { loop.exit(1); });
        QCOMPARE(loop.exec(), 0);
    }
    QCOMPARE(openDescriptors(), before);
}

VESK_TEST(AgentProcessTest)

#include "AgentProcessTest.moc"
