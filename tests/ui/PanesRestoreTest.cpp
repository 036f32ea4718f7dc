// What stands in the panes after a restart, and how the keyboard goes through them.
#include "sessions/ProjectChat.h"
#include "support/PastConversations.h"
#include "support/TestRegistry.h"
#include "ui/shell/Workspace.h"
#include "ui/Theatre.h"

#include <QDir>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;
using Test::PastConversations;
using Test::ShellStage;
using Test::Theatre;

namespace
{

/** "하나 둘*|셋*": the panes, and what each shows; "·" behind a conversation that has not been read. */
QString restored(Workspace &workspace)
{
    QStringList panes;
    for (const PaneNode *pane : workspace.panes()->tree().panes()) {
        QStringList tabs;
        for (const QUuid &tab : pane->tabs) {
            const RosterSession *session = workspace.roster().find(tab);
            tabs.append(session->title() + (session->chat->messages().isEmpty() ? u"·"_s : QString())
                        + (tab == pane->shown ? u"*"_s : QString()));
        }
        panes.append(tabs.join(u' '));
    }
    return panes.join(u'|');
}

void resume(ShellStage &stage, const PastConversations &past, const QString &id, const QString &title)
{
    past.write(id, {PastConversations::said(u"고쳐줘"_s), PastConversations::answered(u"네"_s)});
    ProjectChat *opened = nullptr;
    stage.runtime().resume().resumeSession({.id = id,
                                            .cwd = past.project(),
                                            .alias = u"billing"_s,
                                            .title = title,
                                            .lastModified = {},
                                            .path = past.path(id),
                                            .size = 0},
                                           &stage.runtime(), [&](ProjectChat *chat) { opened = chat; });
    QTRY_VERIFY(opened);
}

void closeAll(Runtime &runtime)
{
    while (!runtime.agentStore().sessions().isEmpty()) {
        runtime.closeSession(runtime.agentStore().sessions().constFirst());
    }
}

} // namespace

class PanesRestoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QDir(QDir::homePath() + u"/.claude"_s).removeRecursively(); }

    void conversationsComeBackToTheirPanes()
    {
        ShellStage stage;
        stage.runtime().start();
        stage.addProject(u"billing"_s, 0);
        const PastConversations past(QDir::homePath(), QDir::homePath() + u"/src/billing"_s);
        const auto stored = [&] { return stage.preferences().stringValue(PreferenceKey::windowPanes); };
        {
            const Theatre theatre(stage);
            int number = 0;
            for (const QString &title : {u"하나"_s, u"둘"_s, u"셋"_s, u"넷"_s, u"다섯"_s}) {
                resume(stage, past, u"c%1"_s.arg(++number), title);
            }
            theatre.workspace().newSession(); // nothing was said in it: nothing to come back to
            theatre.press(Qt::Key_4, Qt::ControlModifier);
            theatre.press(Qt::Key_Backslash, Qt::ControlModifier);
            theatre.press(Qt::Key_Left, Qt::AltModifier);
            theatre.press(Qt::Key_2, Qt::ControlModifier);
            QCOMPARE(restored(theatre.workspace()), u"하나 둘* 셋 다섯 Session 6·|넷*"_s);
        }
        closeAll(stage.runtime());
        const QString before = stored();
        {
            // A run that ends before anything came back, or without its list of projects.
            Workspace workspace(stage.runtime());
            QCOMPARE(restored(workspace), u"|"_s);
            QVERIFY(workspace.panes()->index(0).data(Panes::ExpectingRole).toBool());
        }
        QCOMPARE(stored(), before);

        QVERIFY(QFile::remove(past.path(u"c3"_s)));
        const Theatre theatre(stage);
        QTRY_COMPARE(restored(theatre.workspace()), u"하나· 둘* 다섯·|넷*"_s);
        QVERIFY(!theatre.workspace().panes()->index(0).data(Panes::ExpectingRole).toBool());
        theatre.picture(u"panes-restored"_s);
        for (const ProjectChat *chat : stage.runtime().agentStore().sessions()) {
            QVERIFY(!chat->childIsRunning() && !chat->isRunning());
        }
        theatre.press(Qt::Key_3, Qt::ControlModifier);
        QTRY_COMPARE(restored(theatre.workspace()), u"하나· 둘 다섯*|넷*"_s);
        QTRY_VERIFY(!stored().contains(u"c3"_s));
        QVERIFY(stored().contains(u"c1"_s));
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void tabGoesThroughOnePaneAfterTheOther()
    {
        ShellStage stage;
        stage.runtime().start();
        stage.addProject(u"billing"_s, 0);
        for (int number = 0; number < 4; ++number) {
            stage.addSession(u"billing"_s, u"일 %1"_s.arg(number));
        }
        const Theatre theatre(stage);
        Workspace &workspace = theatre.workspace();
        // The last one to the left, the first one to the right: not in the order in which they were opened.
        theatre.press(Qt::Key_Backslash, Qt::ControlModifier);
        theatre.press(Qt::Key_Left, Qt::AltModifier);
        theatre.press(Qt::Key_Backslash, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(workspace.panes()->count(), 3);
        const auto paneWithFocus = [&] {
            const QQuickItem *item = theatre.window()->activeFocusItem();
            const QPointF centre = item->mapToScene({item->width() / 2, item->height() / 2});
            for (int row = 0; row < workspace.panes()->count(); ++row) {
                const double left = 257; // the sidebar and its line
                if (workspace.panes()
                        ->index(row)
                        .data(Panes::PlaceRole)
                        .toRectF()
                        .translated(left, 0)
                        .contains(centre)) {
                    return row;
                }
            }
            return -1;
        };
        const auto stripItems = [](const QQuickItem *item) { return item->mapToScene({0, 0}).y() < 36; };
        QTest::qWait(50);
        for (const bool forward : {true, false}) {
            theatre.press(Qt::Key_L, Qt::ControlModifier);
            const QQuickItem *const begin = theatre.window()->activeFocusItem();
            QList<int> stops;
            int count = 0;
            int onTabs = 0;
            do {
                theatre.press(forward ? Qt::Key_Tab : Qt::Key_Backtab);
                QTest::qWait(1); // whatever follows the focus
                const int pane = paneWithFocus();
                if (pane == 0 && stripItems(theatre.window()->activeFocusItem())) {
                    ++onTabs;
                }
                if (stops.isEmpty() || stops.constLast() != pane) {
                    stops.append(pane);
                }
            } while (++count < 300 && theatre.window()->activeFocusItem() != begin);
            QVERIFY(count < 300);
            QVERIFY2(onTabs > 1, "the tabs and what stands beside them are on the way");
            stops.removeAll(-1);
            if (stops.constFirst() == stops.constLast()) {
                stops.removeLast(); // round the end
            }
            QCOMPARE(stops, forward ? (QList {1, 2, 0}) : (QList {1, 0, 2}));
        }
    }
};

VESK_TEST(PanesRestoreTest)
#include "PanesRestoreTest.moc"
