// The open sessions of the window and the form for a new project, on a real runtime without a window.
#include "ui/shell/Workspace.h"

#include "sessions/ProjectChat.h"
#include "support/TestRegistry.h"
#include "ui/shell/AddProject.h"
#include "ui/shell/Projects.h"
#include "ui/ShellStage.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;
using Test::ShellStage;

namespace
{

QStringList titles(const QAbstractItemModel &model)
{
    QStringList titles;
    for (int row = 0; row < model.rowCount(); ++row) {
        titles.append(model.index(row, 0).data().toString());
    }
    return titles;
}

SessionState stateOf(Workspace &workspace, const ProjectChat &chat)
{
    return sessionState(workspace.roster().find(&chat)->facts());
}

QString keyOf(const ProjectChat &chat)
{
    return chat.id().toString(QUuid::WithoutBraces);
}

/** Two projects with three sessions, and testers on every list before anything is in them. */
struct Scene {
    Scene()
    {
        stage.runtime().start();
        stage.addProject(u"billing"_s, 0);
        stage.addProject(u"storefront"_s, 1);
    }
    ShellStage stage;
    Workspace workspace {stage.runtime()};
    QAbstractItemModelTester tabs {workspace.tabs(), QAbstractItemModelTester::FailureReportingMode::QtTest};
    QAbstractItemModelTester sidebar {workspace.sidebar(),
                                      QAbstractItemModelTester::FailureReportingMode::QtTest};
    QAbstractItemModelTester myTurn {workspace.myTurn(),
                                     QAbstractItemModelTester::FailureReportingMode::QtTest};
};

} // namespace

class WorkspaceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sessionsStandUnderTheirProjects()
    {
        Scene scene;
        ProjectChat &first = scene.stage.addSession(u"billing"_s, u"a"_s);
        scene.stage.addSession(u"storefront"_s, u"b"_s);
        ProjectChat &third = scene.stage.addSession(u"billing"_s, u"c"_s);
        QCOMPARE(titles(*scene.workspace.tabs()), QStringList({u"a"_s, u"b"_s, u"c"_s}));
        QCOMPARE(titles(*scene.workspace.sidebar()),
                 QStringList({u"billing"_s, u"a"_s, u"c"_s, u"storefront"_s, u"b"_s}));
        QCOMPARE(scene.workspace.sidebar()->rowStartingWith(u"B"_s, 0), 4);

        scene.workspace.rename(keyOf(first), u"  z "_s);
        scene.workspace.rename(keyOf(third), u"  "_s);
        QCOMPARE(titles(*scene.workspace.tabs()), QStringList({u"z"_s, u"b"_s, u"c"_s}));

        scene.stage.runtime().removeProject(u"billing"_s);
        QCOMPARE(titles(*scene.workspace.tabs()), QStringList({u"b"_s}));
        QCOMPARE(titles(*scene.workspace.sidebar()), QStringList({u"storefront"_s, u"b"_s}));
        QCOMPARE(scene.workspace.currentIndex(), 0);
    }

    void selectionGoesRoundAndSurvivesClosing()
    {
        Scene scene;
        QSignalSpy changed(&scene.workspace, &Workspace::currentChanged);
        QCOMPARE(scene.workspace.currentIndex(), -1);
        scene.workspace.selectNext();
        scene.workspace.newSession(); // the first project, since none was used yet
        QCOMPARE(scene.workspace.currentChat()->alias(), u"billing"_s);
        scene.workspace.newSession(u"storefront"_s);
        scene.workspace.newSession(); // where the last one was
        QCOMPARE(scene.workspace.currentChat()->alias(), u"storefront"_s);
        QCOMPARE(scene.workspace.currentIndex(), 2);
        QCOMPARE(changed.size(), 3);
        scene.workspace.selectNext();
        QCOMPARE(scene.workspace.currentIndex(), 0);
        scene.workspace.selectPrevious();
        QCOMPARE(scene.workspace.currentIndex(), 2);
        scene.workspace.selectIndex(8);
        QCOMPARE(scene.workspace.currentIndex(), 2);

        scene.workspace.selectIndex(1);
        const ProjectChat *right = scene.stage.runtime().agentStore().sessions().at(2);
        scene.workspace.requestClose(scene.workspace.currentKey());
        QCOMPARE(scene.workspace.currentChat(), right);
        changed.clear();
        scene.workspace.requestClose(scene.workspace.tabs()->keyAt(0));
        QCOMPARE(scene.workspace.currentChat(), right);
        QCOMPARE(scene.workspace.currentIndex(), 0);
        QCOMPARE(changed.size(), 1); // its place is another
        scene.workspace.requestClose(scene.workspace.currentKey());
        QCOMPARE(scene.workspace.currentChat(), nullptr);
        QCOMPARE(scene.workspace.currentIndex(), -1);
    }

    void withoutProjectsANewSessionAsksForOne()
    {
        ShellStage stage;
        Workspace workspace(stage.runtime());
        QSignalSpy asked(&workspace, &Workspace::addProjectRequested);
        workspace.newSession();
        QCOMPARE(asked.size(), 1);
        QVERIFY(!workspace.hasProjects());
    }

    void whatWaitsIsCountedOldestFirst()
    {
        Scene scene;
        ProjectChat &approval = scene.stage.addSession(u"billing"_s, u"approval"_s);
        ProjectChat &answer = scene.stage.addSession(u"storefront"_s, u"answer"_s);
        QCOMPARE(scene.workspace.windowTitle(), u"Vesk"_s);
        ShellStage::run(approval, u"go"_s);
        ShellStage::run(answer, u"go"_s);
        ShellStage::askQuestions(answer, 2);
        QTest::qWait(5); // two moments that differ
        ShellStage::askPermission(approval, u"Bash"_s, u"ls"_s);
        QCOMPARE(titles(*scene.workspace.myTurn()), QStringList({u"answer"_s, u"approval"_s}));
        QCOMPARE(scene.workspace.windowTitle(), u"(2) 내 차례 — Vesk"_s);
        QCOMPARE(scene.workspace.myTurn()->index(0).data(SessionRowsModel::ReasonRole).toString(),
                 u"질문 2개 · 방금"_s);
        scene.workspace.selectNextMyTurn();
        QCOMPARE(scene.workspace.currentChat(), &answer);
        scene.workspace.selectNextMyTurn();
        QCOMPARE(scene.workspace.currentChat(), &approval);

        approval.respondToPermission(PermissionChoice::Once);
        QCOMPARE(titles(*scene.workspace.myTurn()), QStringList({u"answer"_s}));
        QCOMPARE(stateOf(scene.workspace, approval), SessionState::Running);
    }

    void lookingForASecondMakesSeen()
    {
        Scene scene;
        ProjectChat &shown = scene.stage.addSession(u"billing"_s, u"shown"_s);
        ProjectChat &hidden = scene.stage.addSession(u"billing"_s, u"hidden"_s);
        for (ProjectChat *chat : {&shown, &hidden}) {
            ShellStage::run(*chat, u"go"_s);
        }
        ShellStage::finish(shown, u"done"_s);
        ShellStage::failRun(hidden, u"API Error"_s);
        QCOMPARE(stateOf(scene.workspace, shown), SessionState::Finished);
        QCOMPARE(stateOf(scene.workspace, hidden), SessionState::Failed);

        // An inactive window shows, but nobody looks.
        QTest::qWait(Workspace::seenAfterMs + 200);
        QCOMPARE(stateOf(scene.workspace, shown), SessionState::Finished);
        scene.workspace.setWindowActive(true);
        QCOMPARE(stateOf(scene.workspace, shown), SessionState::Finished);
        QTRY_COMPARE(stateOf(scene.workspace, shown), SessionState::Idle);
        QCOMPARE(stateOf(scene.workspace, hidden), SessionState::Failed);
        scene.workspace.select(keyOf(hidden));
        QTRY_COMPARE(stateOf(scene.workspace, hidden), SessionState::Idle);
    }

    void whoStopsARunKnowsItsEnd()
    {
        Scene scene;
        ProjectChat &chat = scene.stage.addSession(u"billing"_s, u"a"_s);
        ShellStage::run(chat, u"go"_s);
        chat.stop();
        QCOMPARE(stateOf(scene.workspace, chat), SessionState::Idle);
    }

    void theEndOfBackgroundWorkIsAnEndOfItsOwn()
    {
        Scene scene;
        ProjectChat &chat = scene.stage.addSession(u"billing"_s, u"a"_s);
        const auto begin = [&] {
            ShellStage::run(chat, u"go"_s);
            chat.handleLine(R"({"type":"system","subtype":"task_started","task_id":"b"})");
            ShellStage::finish(chat, u"started"_s);
        };
        begin();
        scene.workspace.setWindowActive(true);
        QTRY_VERIFY(!scene.workspace.roster().find(&chat)->unseen);
        scene.workspace.setWindowActive(false);
        QCOMPARE(stateOf(scene.workspace, chat), SessionState::Background);
        chat.handleLine(R"({"type":"system","subtype":"task_notification","task_id":"b"})");
        QCOMPARE(stateOf(scene.workspace, chat), SessionState::Finished);
        scene.workspace.setWindowActive(true);
        QTRY_COMPARE(stateOf(scene.workspace, chat), SessionState::Idle);
        begin();
        QTRY_COMPARE(stateOf(scene.workspace, chat), SessionState::Background);
        QTRY_VERIFY(!scene.workspace.roster().find(&chat)->unseen);
        chat.stop();
        QCOMPARE(stateOf(scene.workspace, chat), SessionState::Idle);
    }

    void closingWhatWorksIsAskedAboutOnce()
    {
        Scene scene;
        ProjectChat &chat = scene.stage.addSession(u"billing"_s, u"a"_s);
        QVERIFY(scene.workspace.liveWork().isEmpty());
        ShellStage::run(chat, u"go"_s);
        QCOMPARE(scene.workspace.liveWork().size(), 1);
        QSignalSpy asked(&scene.workspace, &Workspace::closeConfirmationNeeded);
        scene.workspace.requestClose(keyOf(chat));
        QCOMPARE(asked.size(), 1);
        QCOMPARE(scene.workspace.tabs()->count(), 1);
        scene.workspace.close(keyOf(chat));
        QCOMPARE(scene.workspace.tabs()->count(), 0);
        QVERIFY(scene.workspace.liveWork().isEmpty());
    }

    void theProgramThatIsMissing()
    {
        ShellStage stage(ShellStage::Agent::Missing);
        const Workspace workspace(stage.runtime());
        QVERIFY(workspace.agentMissing());
        QVERIFY(!workspace.installCommand().isEmpty());
        QVERIFY(!workspace.installText().contains(workspace.installCommand()));
    }

    void aliasFollowsTheFolderUntilItIsTyped()
    {
        ShellStage stage;
        stage.runtime().start();
        stage.addProject(u"billing"_s, 0);
        Projects projects(stage.runtime());
        AddProject form(projects);
        form.begin();
        QVERIFY(form.folderReason().isEmpty() && form.aliasReason().isEmpty() && !form.canAdd());
        QCOMPARE(form.lane(), 1);

        const QString folder = stage.path(u"elsewhere/billing"_s);
        form.setFolder(folder);
        QCOMPARE(form.alias(), u"billing-2"_s);
        QVERIFY(!form.folderReason().isEmpty() && !form.canAdd());
        QDir().mkpath(folder);
        form.setFolder(folder + u'/');
        QVERIFY2(form.canAdd(), qPrintable(form.folderReason()));
        form.setAlias(u"billing"_s);
        QVERIFY(!form.aliasReason().isEmpty() && !form.submit());
        form.setAlias(u"money"_s);
        form.setFolder(u"~/src/billing"_s);
        QCOMPARE(form.alias(), u"money"_s);
        QVERIFY(form.submit());
        QCOMPARE(stage.runtime().catalogEntries().constLast().path, QDir::homePath() + u"/src/billing"_s);
        QCOMPARE(projects.folder(u"money"_s), QDir::homePath() + u"/src/billing"_s);
    }

    void anUnreadableCatalogIsKeptBeforeItIsWrittenOver()
    {
        ShellStage stage;
        QFile file(stage.path(u"projects.json"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[{\"alias\": \"old\"");
        file.close();
        stage.runtime().start();
        Projects projects(stage.runtime());
        QVERIFY(!projects.loadError().isEmpty());
        QCOMPARE(projects.add(u"new"_s, stage.path(QString()), 0), QString());
        QVERIFY(projects.loadError().isEmpty());
        QFile copy(stage.path(u"projects.json.bak"_s));
        QVERIFY(copy.open(QIODevice::ReadOnly));
        QCOMPARE(copy.readAll(), QByteArray("[{\"alias\": \"old\""));
        QDir().mkpath(stage.path(u"second"_s));
        QCOMPARE(projects.add(u"second"_s, stage.path(u"second"_s), 1), QString());
        QVERIFY(!QFile::exists(stage.path(u"projects.json.bak-2"_s)));
    }
};

VESK_TEST(WorkspaceTest)
#include "WorkspaceTest.moc"
