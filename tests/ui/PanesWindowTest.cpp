// The panes of the main window, worked by keys and by the mouse. With VESK_SHOTS in the environment it leaves
// pictures there.
#include "sessions/ProjectChat.h"
#include "support/TestRegistry.h"
#include "ui/controls/Theme.h"
#include "ui/shell/Workspace.h"
#include "ui/Theatre.h"

#include <QAbstractItemModelTester>
#include <QGuiApplication>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;
using Test::ShellStage;
using Test::Theatre;

namespace
{

constexpr auto ctrl = Qt::ControlModifier;
constexpr auto ctrlShift = Qt::ControlModifier | Qt::ShiftModifier;
constexpr auto altShift = Qt::AltModifier | Qt::ShiftModifier;

void openSessions(ShellStage &stage, int count)
{
    stage.runtime().start();
    stage.addProject(u"billing"_s, 0);
    for (int number = 0; number < count; ++number) {
        stage.addSession(u"billing"_s, u"일 %1"_s.arg(number));
    }
}

/** As in "0 1*|>2*". */
QString seen(const Theatre &theatre)
{
    return theatre.panes().remove(u"일 "_s);
}

} // namespace

class PanesWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { Theme::shared().setMode(u"system"_s); }

    void keysSplitMoveAndClose()
    {
        ShellStage stage;
        openSessions(stage, 4);
        const Theatre theatre(stage);
        Workspace &workspace = theatre.workspace();
        const QAbstractItemModelTester panes(workspace.panes(),
                                             QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QAbstractItemModelTester splits(workspace.panes()->splits(),
                                              QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QAbstractItemModelTester tabs(
            workspace.panes()->index(0).data(Panes::TabsRole).value<PaneTabs *>(),
            QAbstractItemModelTester::FailureReportingMode::QtTest);
        theatre.window()->resize(1440, 1300); // room for three rows
        const struct {
            int key;
            Qt::KeyboardModifiers modifiers;
            QString wanted;
        } steps[] = {
            {Qt::Key_2, ctrl, u">0 1* 2 3"_s},
            {Qt::Key_Backslash, ctrl, u"0 2* 3|>1*"_s},
            {Qt::Key_Left, Qt::AltModifier, u">0 2* 3|1*"_s},
            {Qt::Key_Backslash, ctrlShift, u"0 3*|>2*|1*"_s},
            {Qt::Key_Right, Qt::AltModifier, u"0 3*|2*|>1*"_s},
            {Qt::Key_Left, altShift, u">0 3 1*|2*"_s},    // the nearest with the longest common edge
            {Qt::Key_PageUp, ctrlShift, u">0 1* 3|2*"_s}, // along its own tabs
            {Qt::Key_Tab, ctrl, u">0 1 3*|2*"_s},
            {Qt::Key_Tab, ctrl, u">0* 1 3|2*"_s}, // round the tabs of one pane
            {Qt::Key_Up, altShift, u">0*|1* 3|2*"_s},
            {Qt::Key_2, ctrl, u">0*|1* 3|2*"_s}, // no second tab here
            {Qt::Key_W, ctrl, u">1* 3|2*"_s},
            {Qt::Key_Down, altShift, u"3*|>2 1*"_s},
        };
        for (const auto &step : steps) {
            theatre.press(step.key, step.modifiers);
            QCOMPARE(seen(theatre), step.wanted);
        }
        QTRY_VERIFY(theatre.composer());
        theatre.press(Qt::Key_N, ctrl);
        QCOMPARE(workspace.panes()->count(), 2);
        QCOMPARE(workspace.currentIndex(), 2);
        // Alone in its pane: its new neighbour is a new session.
        theatre.press(Qt::Key_Up, Qt::AltModifier);
        theatre.press(Qt::Key_Backslash, ctrl);
        QCOMPARE(workspace.panes()->count(), 3);
        QCOMPARE(workspace.tabs()->count(), 5);
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void aViewStaysWhatItWasWhereverItGoes()
    {
        ShellStage stage;
        openSessions(stage, 2);
        ProjectChat &chat = *stage.runtime().agentStore().sessions().constFirst();
        ShellStage::run(chat, u"go"_s);
        ShellStage::finish(chat, u"줄\n\n"_s.repeated(200));
        const Theatre theatre(stage);
        Workspace &workspace = theatre.workspace();
        QTRY_VERIFY(theatre.composer());
        QQuickItem *const editor = theatre.composer();
        QQuickItem *const timeline = theatre.withName(u"timelineRows"_s);
        theatre.type(u"half a thought"_s);
        QTRY_VERIFY(timeline->property("visibleSize").toDouble() < 1);
        QMetaObject::invokeMethod(timeline, "scrollToStart");
        QTRY_VERIFY(!timeline->property("stickToBottom").toBool());

        theatre.press(Qt::Key_Backslash, ctrl);
        theatre.press(Qt::Key_Left, altShift);
        theatre.press(Qt::Key_Down, altShift);
        QCOMPARE(seen(theatre), u"1*|>0*"_s);
        QTRY_COMPARE(theatre.composer(), editor);
        QCOMPARE(editor->property("text").toString(), u"half a thought"_s);
        QVERIFY(!timeline->property("stickToBottom").toBool());
        QCOMPARE(timeline->property("visibleStart").toDouble(), 0.0);
        theatre.press(Qt::Key_Up, Qt::AltModifier);
        QTRY_VERIFY(theatre.composer() && theatre.composer() != editor);
        // Looking at it is enough: both panes are in view.
        QTRY_COMPARE(sessionState(workspace.roster().find(&chat)->facts()), SessionState::Idle);
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void pointingAtAPaneFocusesIt()
    {
        ShellStage stage;
        openSessions(stage, 2);
        const Theatre theatre(stage);
        theatre.press(Qt::Key_Backslash, ctrl);
        QCOMPARE(seen(theatre), u"1*|>0*"_s);
        QTRY_VERIFY(theatre.composer());
        const QQuickItem *const right = theatre.composer();
        QTest::mouseClick(theatre.window(), Qt::LeftButton, {}, theatre.inPane(0, 0.5, 0.4));
        QTRY_COMPARE(seen(theatre), u">1*|0*"_s);
        QTRY_VERIFY(theatre.composer() && theatre.composer() != right);
        QTest::mouseClick(theatre.window(), Qt::LeftButton, {}, Test::centreOf(*right));
        QTRY_COMPARE(seen(theatre), u"1*|>0*"_s);
        QTRY_COMPARE(theatre.composer(), right);
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void tabsAreDragged()
    {
        ShellStage stage;
        openSessions(stage, 4);
        const Theatre theatre(stage);
        Workspace &workspace = theatre.workspace();
        const auto tab = [&theatre](int number) {
            return Test::centreOf(*theatre.tab(u"일 %1"_s.arg(number)));
        };
        theatre.drag(tab(1), theatre.inPane(0, 0.95, 0.5), false);
        QVERIFY(workspace.tabDrag()->active());
        theatre.picture(u"drag-edge"_s);
        theatre.press(Qt::Key_Escape);
        QVERIFY(!workspace.tabDrag()->active());
        QTest::mouseRelease(theatre.window(), Qt::LeftButton, {}, theatre.inPane(0, 0.95, 0.5));
        QTest::qWait(20);
        QCOMPARE(seen(theatre), u">0* 1 2 3"_s);

        theatre.drag(tab(1), theatre.inPane(0, 0.95, 0.5));
        QTRY_COMPARE(seen(theatre), u"0* 2 3|>1*"_s);
        theatre.drag(tab(0), tab(1) + QPoint(-10, 0), false);
        QCOMPARE(workspace.tabDrag()->mark().width(), 2);
        theatre.picture(u"drag-strip"_s);
        QTest::mouseRelease(theatre.window(), Qt::LeftButton, {}, tab(1) + QPoint(-10, 0));
        QTRY_COMPARE(seen(theatre), u"2* 3|>0* 1"_s);
        theatre.drag(tab(3), tab(2) - QPoint(20, 0)); // along its own strip
        QTRY_COMPARE(seen(theatre), u">3* 2|0* 1"_s);
        theatre.drag(tab(2), theatre.inPane(1, 0.5, 0.5));
        QTRY_COMPARE(seen(theatre), u"3*|>0 1 2*"_s);
        theatre.drag(tab(3), theatre.inPane(1, 0.5, 0.5)); // the last one takes its pane along
        QTRY_COMPARE(seen(theatre), u">0 1 2 3*"_s);
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void linesAreDraggedAndMadeEven()
    {
        ShellStage stage;
        openSessions(stage, 2);
        const Theatre theatre(stage);
        Workspace &workspace = theatre.workspace();
        theatre.press(Qt::Key_Backslash, ctrl);
        const auto left = [&] {
            return workspace.panes()->index(0).data(Panes::PlaceRole).toRectF().width();
        };
        const double half = left();
        theatre.drag(theatre.inPane(1, 0, 0.5), theatre.inPane(1, 0, 0.5) + QPoint(100, 0));
        QVERIFY(std::abs(left() - half - 100) < 8);
        theatre.drag(theatre.inPane(1, 0, 0.5), theatre.inPane(0, 0, 0.5));
        QCOMPARE(left(), leastPane.width());
        QTest::mouseDClick(theatre.window(), Qt::LeftButton, {}, theatre.inPane(1, 0, 0.5));
        QTRY_VERIFY(std::abs(left() - half) <= 1);
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void theMenuOfATabMovesIt()
    {
        ShellStage stage;
        openSessions(stage, 2);
        const Theatre theatre(stage);
        theatre.press(Qt::Key_F6, Qt::ShiftModifier);
        theatre.press(Qt::Key_Right);
        QCOMPARE(seen(theatre), u">0 1*"_s);
        QTRY_VERIFY(theatre.composer());
        theatre.press(Qt::Key_F6, Qt::ShiftModifier);
        theatre.press(Qt::Key_Menu);
        QTRY_VERIFY(theatre.shows(u"탭을 왼쪽으로"_s));
        QVERIFY(!theatre.shows(u"왼쪽 칸으로 옮기기"_s));
        theatre.picture(u"tab-menu"_s);
        theatre.press(Qt::Key_Down);
        theatre.press(Qt::Key_Down);
        theatre.press(Qt::Key_Return);
        QTRY_COMPARE(seen(theatre), u"0*|>1*"_s);
        QTRY_VERIFY(!theatre.shows(u"탭을 왼쪽으로"_s));
        QTRY_VERIFY(theatre.composer());
        theatre.press(Qt::Key_F6, Qt::ShiftModifier);
        theatre.press(Qt::Key_Menu);
        QTRY_VERIFY(theatre.shows(u"왼쪽 칸으로 옮기기"_s));
        theatre.picture(u"tab-menu-panes"_s);
        theatre.click(u"왼쪽 칸으로 옮기기"_s);
        QTRY_COMPARE(seen(theatre), u">0 1*"_s);
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void panesAreThereAgain()
    {
        ShellStage stage;
        openSessions(stage, 2);
        {
            const Theatre theatre(stage);
            theatre.press(Qt::Key_Backslash, ctrl);
            QCOMPARE(theatre.workspace().panes()->count(), 2);
        }
        while (!stage.runtime().agentStore().sessions().isEmpty()) {
            stage.runtime().closeSession(stage.runtime().agentStore().sessions().constFirst());
        }
        {
            const Theatre theatre(stage);
            QCOMPARE(seen(theatre), u"|>"_s);
            theatre.picture(u"panes-back"_s);
            theatre.press(Qt::Key_N, ctrl);
            QCOMPARE(theatre.workspace().panes()->count(), 2);
            theatre.press(Qt::Key_Left, Qt::AltModifier);
            theatre.press(Qt::Key_W, ctrl); // an empty pane closes
            QCOMPARE(theatre.workspace().panes()->count(), 1);
            QCOMPARE(theatre.workspace().tabs()->count(), 1);
            QCOMPARE(theatre.warnings(), QStringList());
        }
        QVERIFY(!stage.preferences().contains(PreferenceKey::windowPanes));
        stage.preferences().setValue(PreferenceKey::windowPanes, u"{\"root\": 7"_s);
        const Theatre theatre(stage);
        QCOMPARE(theatre.workspace().panes()->count(), 1);
    }

    void pictures_data()
    {
        QTest::addColumn<QString>("theme");
        QTest::newRow("dark") << u"dark"_s;
        QTest::newRow("light") << u"light"_s;
    }

    void pictures()
    {
        QFETCH(QString, theme);
        ShellStage stage;
        openSessions(stage, 8);
        stage.preferences().setTheme(theme == u"dark" ? ThemeChoice::Dark : ThemeChoice::Light);
        const auto &chats = stage.runtime().agentStore().sessions();
        ShellStage::run(*chats.at(0), u"결제 취소 웹훅이 두 번 오면 환불이 두 번 기록돼. 원인을 찾아줘."_s);
        ShellStage::run(*chats.at(1), u"배포를 한 번 돌려봐"_s);
        ShellStage::askPermission(*chats.at(1), u"Bash"_s, u"./scripts/deploy.sh --env staging"_s);
        const Theatre theatre(stage);
        Workspace &workspace = theatre.workspace();
        theatre.press(Qt::Key_2, ctrl);
        for (int panes = 2; panes <= 6; ++panes) { // three columns, then a second row
            theatre.press(Qt::Key_Backslash, panes <= 3 ? Qt::KeyboardModifiers(ctrl) : ctrlShift);
            theatre.picture(theme + u"-panes-%1"_s.arg(panes));
            QCOMPARE(workspace.panes()->count(), panes);
            if (panes > 3) {
                theatre.press(Qt::Key_Left, Qt::AltModifier);
            }
        }
        theatre.window()->resize(900, 600);
        theatre.picture(theme + u"-panes-6-narrow"_s);
        for (int step = 0; step < 6; ++step) {
            theatre.press(Qt::Key_Plus, ctrl);
        }
        theatre.window()->resize(1440, 900);
        theatre.picture(theme + u"-panes-6-160"_s);
        QCOMPARE(theatre.warnings(), QStringList());
    }
};

VESK_TEST(PanesWindowTest)
#include "PanesWindowTest.moc"
