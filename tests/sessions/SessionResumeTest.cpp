// Listing past conversations while the window lives on, taking them up, throwing them away.
#include "sessions/SessionResume.h"

#include "core/ProjectCatalog.h"
#include "sessions/AgentSessionStore.h"
#include "sessions/SessionScan.h"
#include "support/PastConversations.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QSignalSpy>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;
using Test::PastConversations;

namespace
{

/** One scan to its end: id=title, newest first. */
QStringList scanned(SessionScan &scan, const PastConversations &past)
{
    QStringList seen;
    const auto connection =
        QObject::connect(&scan, &SessionScan::found, &scan, [&](const QList<ResumableSession> &sessions) {
            for (const ResumableSession &session : sessions)
                seen << session.id + u'=' + session.title;
        });
    QSignalSpy finished(&scan, &SessionScan::finished);
    scan.start(past.root(), u"a"_s, past.project());
    (void)QTest::qWaitFor([&] { return !finished.isEmpty(); }, 60'000);
    QObject::disconnect(connection);
    seen.sort();
    return seen;
}

struct ResumeDesk {
    PastConversations past {QDir::homePath()};
    AgentSessionStore store {SessionServices {}};
    ProjectCatalog catalog {past.project() + u"/projects.json"_s};
    QStringList log;
    SessionResume resume {store, catalog, [this](const AuditEvent &event) { log << event.summary(); }};

    ResumeDesk()
    {
        [[maybe_unused]] const auto saved = catalog.upsert({.alias = u"a"_s, .path = past.project()});
    }

    [[nodiscard]] ResumableSession session(const QString &id, const QString &title) const
    {
        return {.id = id,
                .cwd = past.project(),
                .alias = u"a"_s,
                .title = title,
                .lastModified = {},
                .path = past.path(id),
                .size = 0};
    }
    ProjectChat *opened(const ResumableSession &session)
    {
        std::optional<ProjectChat *> chat;
        resume.resumeSession(session, &store, [&](ProjectChat *opened) { chat = opened; });
        (void)QTest::qWaitFor([&] { return chat.has_value(); }, 60'000);
        return chat.value_or(nullptr);
    }
};

} // namespace

class SessionResumeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aScanReadsWhatChangedAndNothingElse()
    {
        const PastConversations past;
        for (int i = 0; i < 200; ++i)
            past.write(u"c%1"_s.arg(i), {PastConversations::said(u"말 %1"_s.arg(i))}, 500);
        SessionScan scan;
        QCOMPARE(scanned(scan, past).size(), 200);

        // The same stamp: not opened again, so the new words stay unknown.
        const QDateTime before = QFileInfo(past.path(u"c7"_s)).lastModified();
        past.write(u"c7"_s, {PastConversations::said(u"딴 7"_s)});
        QFile file(past.path(u"c7"_s));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(before, QFile::FileModificationTime));
        file.close();
        past.write(u"c8"_s, {PastConversations::said(u"딴 8"_s)}, 100);
        QVERIFY(QFile::remove(past.path(u"c9"_s)));
        const QStringList again = scanned(scan, past);
        QCOMPARE(again.size(), 199);
        QVERIFY(again.contains(u"c8=딴 8"_s));
        QVERIFY(again.contains(u"c7=말 7"_s));
    }

    void anEarlierScanIsSilent()
    {
        const PastConversations first, second;
        for (int i = 0; i < 300; ++i)
            first.write(u"f%1"_s.arg(i), {PastConversations::said(u"말"_s)});
        second.write(u"s"_s, {PastConversations::said(u"말"_s)});
        SessionScan scan;
        scan.start(first.root(), u"a"_s, first.project());
        QVERIFY(scan.isRunning());
        QCOMPARE(scanned(scan, second), QStringList {u"s=말"_s});
        QVERIFY(!scan.isRunning());
        scan.start(first.root(), u"a"_s, first.project());
        QSignalSpy finished(&scan, &SessionScan::finished);
        scan.cancel();
        QTest::qWait(50);
        QVERIFY(finished.isEmpty());
    }

    void aConversationIsOpenOnce()
    {
        ResumeDesk desk;
        desk.past.write(u"c"_s, {PastConversations::said(u"고쳐줘"_s), PastConversations::answered(u"네"_s)});
        const ResumableSession session = desk.session(u"c"_s, u"제목"_s);
        ProjectChat *twice = nullptr;
        desk.resume.resumeSession(session, &desk.store, [&](ProjectChat *chat) { twice = chat; });
        ProjectChat *chat = desk.opened(session);
        QVERIFY(chat && chat == twice && chat == desk.opened(session));
        QCOMPARE(desk.store.sessions().size(), 1);
        QCOMPARE(chat->title(), u"제목"_s);
        QCOMPARE(chat->sessionId(), u"c"_s);
        QCOMPARE(chat->messages().rows().size(), 2);
        const QString id = chat->id().toString(QUuid::WithoutBraces);
        QCOMPARE(desk.log, QStringList {u"resumed session 'c' as %1 (2 msgs)"_s.arg(id)});

        desk.log.clear();
        QCOMPARE(desk.resume.deleteResumableSession(session), ResumeDeleteOutcome::Blocked);
        desk.store.remove(chat->id());
        QCOMPARE(desk.resume.deleteResumableSession(session), ResumeDeleteOutcome::Deleted);
        QVERIFY(!QFile::exists(session.path));
        QCOMPARE(desk.resume.deleteResumableSession(session), ResumeDeleteOutcome::Failed);
        QCOMPARE(desk.log,
                 (QStringList {u"delete blocked (open tab): session 'c'"_s, u"trashed session 'c'"_s,
                               u"SYS ERR delete failed: session 'c' (%1)"_s.arg(session.path)}));
    }

    void whatChangesWhileItIsReadCounts()
    {
        ResumeDesk desk;
        desk.past.write(u"c"_s, {PastConversations::said(u"말"_s)});
        int answers = 0;
        QObject gone;
        desk.resume.resumeSession(desk.session(u"c"_s, u"제목"_s), &desk.store, [&](ProjectChat *chat) {
            QVERIFY(!chat);
            ++answers;
        });
        {
            QObject context;
            desk.resume.resumeSession(desk.session(u"c"_s, u"제목"_s), &context,
                                      [](ProjectChat *) { QFAIL("its context is gone"); });
        }
        QVERIFY(desk.catalog.remove(u"a"_s));
        QTRY_COMPARE(answers, 1);
        QVERIFY(!desk.opened(desk.session(u"c"_s, u"제목"_s)));
        QVERIFY(desk.store.sessions().isEmpty());
    }

    void workflowsAreCountedInTheLog()
    {
        ResumeDesk desk;
        desk.past.write(u"w"_s, {PastConversations::said(u"말"_s)});
        const QString folder = desk.past.folder() + u"/w/workflows/"_s;
        desk.past.writeText(folder + u"a.json"_s, uR"({"status":"completed","runId":"r"})"_s);
        desk.past.writeText(folder + u"b.json"_s, u"?"_s);
        const ProjectChat *chat = desk.opened(desk.session(u"w"_s, u"제목"_s));
        QVERIFY(chat);
        QCOMPARE(chat->backgroundTasks().tasks().size(), 1);
        QVERIFY(desk.log.constFirst().endsWith(u" (1 msgs) · workflows 1 restored, 1 skipped"_s));
    }

    void whatWasThrownAwayComesBack()
    {
        using ClaudeSessionHistory::TrashReturn;
        ResumeDesk desk;
        desk.past.write(u"c"_s, {PastConversations::said(u"고쳐줘"_s)});
        const ResumableSession session = desk.session(u"c"_s, u"제목"_s);
        const auto throwAway = [&] {
            return desk.resume.deleteResumableSession(session) == ResumeDeleteOutcome::Deleted;
        };
        const QDir trash(qEnvironmentVariable("XDG_DATA_HOME") + u"/Trash"_s);
        QVERIFY(throwAway());
        QCOMPARE(desk.resume.lastDeleted(), session);
        const auto inTrash = [&](const QString &part) {
            return QDir(trash.filePath(part)).entryList({u"c*"_s}, QDir::Files).size();
        };
        const auto before = inTrash(u"info"_s);
        QCOMPARE(inTrash(u"files"_s), before);
        QCOMPARE(desk.resume.undoDelete(), TrashReturn::Returned);
        QCOMPARE(inTrash(u"files"_s), before - 1);
        QCOMPARE(inTrash(u"info"_s), before - 1);
        QCOMPARE(desk.opened(session)->messages().rows().size(), 1);
        desk.store.remove(desk.store.sessions().first()->id());
        QCOMPARE(desk.resume.undoDelete(), TrashReturn::Gone); // once

        QVERIFY(throwAway());
        desk.past.write(u"c"_s, {PastConversations::said(u"딴 말"_s)});
        QCOMPARE(desk.resume.undoDelete(), TrashReturn::Occupied);
        QCOMPARE(desk.opened(session)->messages().rows().first().text, u"딴 말"_s);
        QVERIFY(QFile::remove(session.path));
        QCOMPARE(desk.resume.undoDelete(), TrashReturn::Returned); // its place is free again
    }

    void anUnreadConversationIsReadWhenItIsWanted()
    {
        ResumeDesk desk;
        desk.past.write(u"c"_s, {PastConversations::said(u"고쳐줘"_s), PastConversations::answered(u"네"_s)});
        desk.past.write(u"c"_s, {PastConversations::said(u"고쳐줘"_s)}, 900, desk.past.otherFolder());
        QStringList found;
        std::optional<ResumableSession> session;
        desk.resume.find({{u"c"_s, u"a"_s, u"제목"_s},
                          {u"gone"_s, u"a"_s, {}},
                          {u"c"_s, u"no project"_s, {}},
                          {u"../c"_s, u"a"_s, {}}},
                         &desk.store, [&](const QList<ResumableSession> &sessions) {
                             for (const ResumableSession &each : sessions)
                                 found << each.path;
                             session = sessions.value(0);
                         });
        QTRY_VERIFY(session);
        QCOMPARE(found, QStringList {desk.past.path(u"c"_s)}); // of two the one that was written last
        QCOMPARE(desk.log.size(), 3);

        QStringList known;
        QObject::connect(&desk.store, &AgentSessionStore::sessionAdded, &desk.store,
                         [&](const ProjectChat *chat) { known << chat->sessionId(); });
        ProjectChat *chat = desk.resume.openUnread(*session);
        QVERIFY(chat && !desk.resume.openUnread(*session));
        QCOMPARE(known, QStringList {u"c"_s}); // whoever hears of it knows which one it is
        QCOMPARE(chat->title(), u"제목"_s);
        QCOMPARE(desk.opened(*session), chat);
        QVERIFY(chat->messages().isEmpty());
        QCOMPARE(desk.resume.deleteResumableSession(*session), ResumeDeleteOutcome::Blocked);

        desk.resume.read(chat);
        desk.resume.read(chat);
        chat->appendSystemNote(u"먼저 온 말"_s);
        QTRY_COMPARE(chat->messages().rows().size(), 3);
        QCOMPARE(chat->messages().rows().last().text, u"먼저 온 말"_s);
        QTest::qWait(20);
        QCOMPARE(chat->messages().rows().size(), 3);
        QVERIFY(!chat->childIsRunning());
    }

    void anUntitledConversationGetsItsTitleLater()
    {
        ResumeDesk desk;
        desk.past.write(u"u"_s, {});
        const ResumableSession session = desk.session(u"u"_s, ClaudeSessionHistory::untitled());
        const ProjectChat *chat = desk.opened(session);
        QVERIFY(chat);
        QCOMPARE(chat->title(), ClaudeSessionHistory::untitled());
        desk.past.write(u"u"_s, {PastConversations::said(u"이제 말했다"_s)});
        QCOMPARE(desk.opened(session), chat);
        QTRY_COMPARE(chat->title(), u"이제 말했다"_s);
    }
};

VESK_TEST(SessionResumeTest)
#include "SessionResumeTest.moc"
