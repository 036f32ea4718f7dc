// Past conversations as files: what is listed, what is read back into rows, and what may be thrown away.
#include "claude/TranscriptFolders.h"
#include "sessions/ClaudeSessionHistory.h"
#include "sessions/ContextTranscript.h"
#include "sessions/PastConversation.h"
#include "sessions/WorkflowSnapshotFile.h"
#include "support/PastConversations.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QElapsedTimer>
#include <QtTest>

#include <sys/stat.h>

using namespace Vesk;
using namespace Qt::StringLiterals;
using Test::PastConversations;
using Role = ChatMessage::Role;

namespace
{

QString usage(int tokens, const QString &more = {})
{
    return QString::fromUtf8(
               R"({"type":"assistant"%1,"message":{"model":"m","content":[],"usage":{"input_tokens":%2}}})")
        .arg(more)
        .arg(tokens);
}

const QString compacted = uR"({"type":"system","subtype":"compact_boundary"})"_s;
const QString bareLine = uR"({"type":"user","toolUseResult":"x"})"_s;

QString snapshot(const QString &more)
{
    return uR"({"status":"completed","runId":"r","workflowName":"감사",%1"summary":"끝"})"_s.arg(more);
}

} // namespace

class SessionHistoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsNewestFirstAndEachConversationOnce()
    {
        const PastConversations past;
        past.write(u"old"_s, {PastConversations::said(u"먼저 한 말"_s)}, 300);
        past.write(u"new"_s, {PastConversations::said(u"말"_s), PastConversations::titled(u"제목"_s)}, 100);
        past.write(u"bare"_s, {bareLine}, 200);
        past.write(u"old"_s, {PastConversations::said(u"더 오래된 사본"_s)}, 400, past.otherFolder());
        past.write(u"today"_s, {PastConversations::titled(u"오늘의 프로그램"_s)}, 50, past.otherFolder());
        QVERIFY(QFile::link(past.path(u"new"_s), past.path(u"link"_s)));
        QVERIFY(QDir().mkpath(past.path(u"folder"_s)));
        QVERIFY(QFile::copy(past.path(u"new"_s), past.folder() + u"/notes.txt"_s));

        const auto found = ClaudeSessionHistory::sessions(past.root(), u"a"_s, past.project());
        QStringList seen;
        for (const ResumableSession &session : found)
            seen << session.id + u'=' + session.title;
        QCOMPARE(seen,
                 (QStringList {u"today=오늘의 프로그램"_s, u"new=제목"_s, u"bare=(제목 없음)"_s,
                               u"old=먼저 한 말"_s}));
        QCOMPARE(found.first().cwd, past.project());
        QVERIFY(ClaudeSessionHistory::sessions(past.root(), u"a"_s, u"/none"_s).isEmpty());
    }

    void rowsWithAndWithoutTools()
    {
        const PastConversations past;
        past.write(u"c"_s,
                   {PastConversations::said(u" 고쳐줘 "_s), PastConversations::answered(u"봅니다"_s),
                    PastConversations::called(u"t1"_s, u"Bash"_s, u"ls"_s), u"{ half a line"_s,
                    PastConversations::called(u"t2"_s, u"Read"_s, u"cat"_s),
                    PastConversations::returned(u"t1"_s, u"a.cpp"_s, false),
                    PastConversations::returned(u"t2"_s, u"없음"_s, true),
                    PastConversations::returned(u"unknown"_s, u"x"_s, true),
                    PastConversations::answered(u"다 됨"_s),
                    PastConversations::called(u"t3"_s, u"Bash"_s, u"make"_s),
                    uR"({"type":"assistant","message":{"content":[{"type":"tool_use"}]}})"_s});
        const auto rows = ClaudeSessionHistory::loadMessages(past.path(u"c"_s), 80, true);
        QCOMPARE(rows.size(), 5);
        QCOMPARE(rows[0].role, Role::User);
        QCOMPARE(rows[0].text, u"고쳐줘"_s);
        QVERIFY(rows[0].at.isValid());
        QCOMPARE(rows[2].role, Role::Tools);
        QCOMPARE(rows[2].tools.size(), 2);
        QCOMPARE(rows[2].tools[0].summary, u"Bash · ls"_s);
        QCOMPARE(rows[2].tools[0].output, u"a.cpp"_s);
        QCOMPARE(rows[2].tools[0].outcome, ToolActivity::Outcome::Ok);
        QCOMPARE(rows[2].tools[1].outcome, ToolActivity::Outcome::Failed);
        QCOMPARE(rows[4].tools.size(), 2); // the answer before it closed the row
        QCOMPARE(rows[4].tools[1].name, u"도구"_s);
        QCOMPARE(rows[4].tools[0].outcome, ToolActivity::Outcome::Failed); // nothing runs in the past
        QCOMPARE(ClaudeSessionHistory::loadMessages(past.path(u"c"_s), 80, false).size(), 3);
    }

    void trimmedKeepsTheToolsOfWhatItKeeps_data()
    {
        QTest::addColumn<QString>("rows"); // u, a, t: one letter a row
        QTest::addColumn<int>("cap");
        QTest::addColumn<QString>("kept");
        QTest::newRow("few") << u"utat"_s << 2 << u"utat"_s;
        QTest::newRow("cut") << u"utatuta"_s << 2 << u"uta"_s;
        QTest::newRow("tools before the cut go") << u"uatau"_s << 2 << u"au"_s;
        QTest::newRow("none") << u"uat"_s << 0 << u""_s;
        QTest::newRow("tools only") << u"tt"_s << 1 << u"tt"_s;
    }
    void trimmedKeepsTheToolsOfWhatItKeeps()
    {
        QFETCH(QString, rows);
        QFETCH(int, cap);
        QList<ChatMessage> messages;
        for (const QChar letter : std::as_const(rows)) {
            ChatMessage row;
            row.role = letter == u'u' ? Role::User : letter == u'a' ? Role::Assistant : Role::Tools;
            messages.append(row);
        }
        QString kept;
        for (const ChatMessage &row : ClaudeSessionHistory::trimmed(messages, cap))
            kept += row.role == Role::User ? u'u' : row.role == Role::Assistant ? u'a' : u't';
        QTEST(kept, "kept");
    }

    void largeAndVanishedFilesGiveAnEmptyConversation()
    {
        const PastConversations past;
        const QString line = PastConversations::said(QString(100'000, u'x'));
        past.write(u"large"_s, QStringList(90, line) << PastConversations::titled(u"큰 것"_s));
        ResumableSession session =
            ClaudeSessionHistory::sessions(past.root(), u"a"_s, past.project()).first();
        QCOMPARE(session.title, u"큰 것"_s);
        QVERIFY(readPastConversation(session).messages.isEmpty());
        QVERIFY(QFile::remove(session.path));
        session.title = ClaudeSessionHistory::untitled();
        const PastConversation gone = readPastConversation(session);
        QVERIFY(gone.messages.isEmpty() && !gone.context);
        QCOMPARE(gone.title, ClaudeSessionHistory::untitled());
    }

    void onlyPlainTranscriptsInsideTheRootMayGo_data()
    {
        QTest::addColumn<QString>("path"); // below the folder of the transcripts
        QTest::addColumn<bool>("deletable");
        QTest::newRow("a transcript") << u"/c.jsonl"_s << true;
        QTest::newRow("by a roundabout way") << u"/../projects/%1/c.jsonl"_s << true;
        QTest::newRow("another suffix") << u"/%1/notes.txt"_s << false;
        QTest::newRow("a link") << u"/%1/link.jsonl"_s << false;
        QTest::newRow("a folder") << u"/%1/folder.jsonl"_s << false;
        QTest::newRow("through a linked folder, outside") << u"/outside/c.jsonl"_s << false;
        QTest::newRow("outside") << u"/../elsewhere/c.jsonl"_s << false;
        QTest::newRow("missing") << u"/%1/none.jsonl"_s << false;
    }
    void onlyPlainTranscriptsInsideTheRootMayGo()
    {
        QFETCH(QString, path);
        QFETCH(bool, deletable);
        const PastConversations past;
        past.write(u"c"_s, {bareLine});
        past.write(u"c"_s, {bareLine}, 0, past.root() + u"/../elsewhere"_s);
        QVERIFY(QFile::copy(past.path(u"c"_s), past.root() + u"/c.jsonl"_s));
        QVERIFY(QFile::copy(past.path(u"c"_s), past.folder() + u"/notes.txt"_s));
        QVERIFY(QFile::link(past.path(u"c"_s), past.path(u"link"_s)));
        QVERIFY(QDir().mkpath(past.path(u"folder"_s)));
        QVERIFY(QFile::link(past.root() + u"/../elsewhere"_s, past.root() + u"/outside"_s));
        const QString whole =
            past.root() + (path.contains(u'%') ? path.arg(QFileInfo(past.folder()).fileName()) : path);
        QCOMPARE(ClaudeSessionHistory::isDeletableSessionFile(whole, past.root()), deletable);
        QCOMPARE(ClaudeSessionHistory::moveToTrash(whole, past.root()).has_value(), deletable);
        QCOMPARE(QFileInfo(whole).exists(), !deletable && !path.endsWith(u"none.jsonl"));
    }

    void workflowsComeBack()
    {
        const PastConversations past;
        past.write(u"c"_s, {bareLine});
        const QString folder = WorkflowSnapshotFile::folderOf(past.path(u"c"_s));
        QCOMPARE(WorkflowSnapshotFile::restore(folder).skipped, 0);
        past.writeText(
            folder + u"/wf_1.json"_s,
            snapshot(uR"("durationMs":5,"totalTokens":7,"workflowProgress":[{"type":"workflow_phase",)"
                     uR"("index":1,"title":"읽기"}],)"_s));
        past.writeText(folder + u"/wf_2.json"_s, uR"({"status":"running","runId":"r2"})"_s);
        past.writeText(folder + u"/wf_3.json"_s, u"{"_s);
        past.writeText(folder + u"/wf_4.json"_s, QString(WorkflowSnapshotFile::maxBytes + 1, u' '));
        past.writeText(folder + u"/notes.txt"_s, u"x"_s);
        const auto restored = WorkflowSnapshotFile::restore(folder);
        QCOMPARE(restored.skipped, 3);
        QCOMPARE(restored.tasks.size(), 1);
        const BackgroundTask &task = restored.tasks.first();
        QCOMPARE(task.id, u"r"_s);
        QCOMPARE(task.description, u"감사"_s);
        QCOMPARE(task.summary, u"끝"_s);
        QVERIFY(task.isRestored && task.status == BackgroundTask::Status::Completed);
        QVERIFY(task.progress && task.progress->phases.size() == 1);
    }

    void theNewestOfManyWorkflows()
    {
        const PastConversations past;
        past.write(u"c"_s, {bareLine});
        const QString folder = WorkflowSnapshotFile::folderOf(past.path(u"c"_s));
        for (int i = 0; i < 500; ++i)
            past.writeText(folder + u"/wf_%1.json"_s.arg(i),
                           uR"({"status":"completed","taskId":"t%1"})"_s.arg(i), 5'000 - i);
        const auto restored = WorkflowSnapshotFile::restore(folder);
        QCOMPARE(restored.tasks.size(), WorkflowSnapshotFile::maxFiles);
        QCOMPARE(restored.tasks.first().id, u"t499"_s);
        QCOMPARE(restored.skipped, 480);
    }

    void workflowStart_data()
    {
        QTest::addColumn<double>("start"); // 0 for absent
        QTest::addColumn<QString>("timestamp");
        QTest::addColumn<QString>("expected");
        QTest::newRow("seconds") << 1'700'000'000.5 << u""_s << u"2023-11-14T22:13:20.500Z"_s;
        QTest::newRow("milliseconds") << 1'700'000'000'500.0 << u""_s << u"2023-11-14T22:13:20.500Z"_s;
        QTest::newRow("time stamp") << 0.0 << u"2026-01-02T03:04:05Z"_s << u"2026-01-02T03:04:05.000Z"_s;
        QTest::newRow("beyond all time")
            << 1e300 << u"2026-01-02T03:04:05Z"_s << u"2026-01-02T03:04:05.000Z"_s;
        QTest::newRow("nothing") << 0.0 << u"yesterday"_s << u""_s;
    }
    void workflowStart()
    {
        QFETCH(double, start);
        QFETCH(QString, timestamp);
        WorkflowSnapshot document;
        if (start > 0)
            document.startTime = start;
        document.timestamp = timestamp;
        QTEST(WorkflowSnapshotFile::startDate(document).toUTC().toString(Qt::ISODateWithMs), "expected");
    }

    void contextOfTheLastAnswer_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<qint64>("tokens"); // 0 for absent
        const QString side = u",\"isSidechain\":true"_s;
        QTest::newRow("the last") << QStringList {usage(5), usage(9), bareLine} << qint64(9);
        QTest::newRow("not a sub-agent's") << QStringList {usage(5), usage(9, side)} << qint64(5);
        QTest::newRow("an answer without tokens") << QStringList {usage(5), usage(0)} << qint64(5);
        QTest::newRow("compacted since") << QStringList {usage(5), compacted, bareLine} << qint64(0);
        QTest::newRow("answered since it was compacted")
            << QStringList {usage(5), compacted, usage(3)} << qint64(3);
        QTest::newRow("cut off") << QStringList {usage(5), usage(7).chopped(9)} << qint64(5);
        QTest::newRow("far from the end")
            << (QStringList {usage(5)} << QStringList(10, PastConversations::said(QString(100'000, u'x'))))
            << qint64(5);
        QTest::newRow("none") << QStringList {bareLine} << qint64(0);
    }
    void contextOfTheLastAnswer()
    {
        QFETCH(QStringList, lines);
        const PastConversations past;
        past.write(u"c"_s, lines);
        const auto live = ContextTranscript::restore(past.path(u"c"_s));
        QTEST(live ? live->tokens : qint64(0), "tokens");
        QVERIFY(!live || (live->isRestored && live->model == u"m"_s && !live->window));
    }
};

VESK_TEST(SessionHistoryTest)
#include "SessionHistoryTest.moc"
