// The issue window driven by keys and the mouse; what came of it is read from the disk. With VESK_SHOTS in
// the environment it leaves pictures there.
#include "issues/IssueFolderPreference.h"
#include "sessions/ProjectChat.h"
#include "support/IssueFolderMaker.h"
#include "support/TestRegistry.h"
#include "ui/controls/DesktopOpener.h"
#include "ui/controls/Theme.h"
#include "ui/issues/IssuesView.h"
#include "ui/Theatre.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;
using Test::ShellStage;
using Test::Theatre;
using Test::IssueFolderMaker::read;
using Test::IssueFolderMaker::write;

namespace
{

/** The issue window of a project "billing". */
struct IssueHouse {
    enum class Folder { None, Filled, Gone };

    explicit IssueHouse(Folder kind = Folder::Filled)
    {
        shell.addProject(u"billing"_s, 0);
        shell.addProject(u"storefront"_s, 4);
        QDir(folder).removeRecursively();
        if (kind == Folder::Filled) {
            Test::IssueFolderMaker::fill(folder);
        }
        if (kind != Folder::None) {
            IssueFolderPreference::setFolder(folder, QDir::homePath() + u"/src/billing"_s,
                                             shell.preferences());
        }
        theatre = std::make_unique<Theatre>(
            [this](QQmlEngine &engine) { return createIssuesWindow(engine, shell.runtime(), u"billing"_s); });
    }
    [[nodiscard]] IssuesView &view() const
    {
        return *theatre->window()->property("view").value<IssuesView *>();
    }
    [[nodiscard]] QString file(const QString &name) const { return folder + u'/' + name; }
    [[nodiscard]] QQuickItem *named(const QString &name) const
    {
        return Test::findItem(theatre->window()->contentItem(),
                              [&name](const QQuickItem &item) { return item.objectName() == name; });
    }

    ShellStage shell;
    QString folder = QDir::homePath() + u"/src/billing/issues"_s;
    std::unique_ptr<Theatre> theatre;
};

const auto fourth = u"BILL-004-cancel-twice.md"_s;

} // namespace

class IssuesWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { Theme::shared().setMode(u"system"_s); }

    void pictures_data()
    {
        QTest::addColumn<QString>("theme");
        QTest::newRow("dark") << u"dark"_s;
        QTest::newRow("light") << u"light"_s;
    }

    void pictures()
    {
        QFETCH(QString, theme);
        Theme::shared().setMode(theme);
        IssueHouse house;
        auto &theatre = *house.theatre;
        QVERIFY(theatre.window());
        QCOMPARE(theatre.window()->title(), u"이슈 — billing"_s);
        house.view().select(house.file(fourth));
        house.view().workOn(house.file(fourth));
        theatre.picture(theme + u"-issues"_s);
        theatre.click(u"나란히"_s);
        auto *editor = house.named(u"issueEditor"_s);
        QVERIFY(editor);
        editor->forceActiveFocus();
        theatre.type(u"typed "_s);
        write(house.file(fourth), read(house.file(fourth)) + u"다른 곳"_s);
        QTRY_VERIFY(theatre.shows(u"외부에서 변경됨"_s));
        theatre.picture(theme + u"-issues-conflict"_s);
        theatre.click(u"다시 읽기"_s);
        theatre.press(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(theatre.shows(u"만들기"_s));
        theatre.picture(theme + u"-issues-new"_s);
        theatre.press(Qt::Key_Escape);
        QTRY_VERIFY(!theatre.shows(u"만들기"_s));
        theatre.click(u"보드 맞추기…"_s);
        QTRY_VERIFY(theatre.shows(u"보드 고치기"_s));
        theatre.picture(theme + u"-issues-board"_s);
        theatre.press(Qt::Key_Escape);
        QTRY_VERIFY(!theatre.shows(u"보드 고치기"_s));
        const QString problem = house.view().problems().first();
        theatre.click(u"관계 문제 %1"_s.arg(house.view().problemCount()));
        QTRY_VERIFY(theatre.shows(problem));
        theatre.picture(theme + u"-issues-problems"_s);
        theatre.press(Qt::Key_Escape);
        QTRY_VERIFY(!theatre.shows(problem));
        for (int step = 0; step < 6; ++step) {
            theatre.press(Qt::Key_Plus, Qt::ControlModifier);
        }
        theatre.window()->resize(900, 600);
        theatre.picture(theme + u"-issues-160-small"_s);
        theatre.press(Qt::Key_0, Qt::ControlModifier);
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void theLineBesideThePreviewGoesWithIt()
    {
        IssueHouse house;
        auto &theatre = *house.theatre;
        house.view().select(house.file(fourth));
        theatre.click(u"나란히"_s);
        const auto *editor = house.named(u"issueEditor"_s);
        QVERIFY(editor);
        constexpr double inset = 20;
        const QPoint edge = editor->mapToScene({editor->width() + inset, editor->height() / 2}).toPoint();
        QCOMPARE(theatre.window()->grabWindow().pixelColor(edge), Theme::shared().colors().line);
        theatre.click(u"편집"_s);
        QCOMPARE(theatre.window()->grabWindow().pixelColor(edge), Theme::shared().colors().canvas);
    }

    void listByKeys()
    {
        IssueHouse house;
        auto &theatre = *house.theatre;
        theatre.press(Qt::Key_F, Qt::ControlModifier);
        theatre.type(u"bill-00"_s);
        QTRY_VERIFY(!theatre.shows(u"정산 실패 알림"_s));
        theatre.press(Qt::Key_Down);
        theatre.press(Qt::Key_Down);
        theatre.press(Qt::Key_Return);
        QTRY_VERIFY(!house.view().selectedPath().isEmpty());
        const QString first = house.view().selectedId();
        theatre.press(Qt::Key_Escape); // first clears the search
        QVERIFY(theatre.shows(u"정산 실패 알림"_s));
        QVERIFY(theatre.window()->isVisible());
        QCOMPARE(house.view().selectedId(), first);

        // A reload keeps the choice and follows the disk.
        write(house.file(u"BILL-040-new.md"_s), u"# BILL-040 · 막 생긴 이슈\n"_s);
        theatre.press(Qt::Key_F5);
        QTRY_COMPARE(house.view().issueCount(), 21);
        QCOMPARE(house.view().selectedId(), first);

        // The keys of the views.
        theatre.press(Qt::Key_2, Qt::ControlModifier);
        QCOMPARE(house.view().section(), IssuesView::Section::Graph);
        const auto *window = theatre.window();
        QTRY_COMPARE(window->activeFocusItem()->objectName(), u"graphCanvas"_s);
        theatre.press(Qt::Key_3, Qt::ControlModifier);
        QTRY_COMPARE(window->activeFocusItem()->objectName(), u"kanbanArea"_s);
        theatre.press(Qt::Key_1, Qt::ControlModifier);
        QTRY_VERIFY(theatre.shows(u"정산 실패 알림"_s));
        const auto *list = Test::findItem(
            window->contentItem(), [](const QQuickItem &item) { return item.inherits("QQuickListView"); });
        QTRY_VERIFY(list && list->hasActiveFocus());
        theatre.press(Qt::Key_F6);
        theatre.press(Qt::Key_F6, Qt::ShiftModifier);
        theatre.press(Qt::Key_W, Qt::ControlModifier);
        QTRY_VERIFY(!theatre.window()->isVisible());
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void statusFromTheListAndBack()
    {
        IssueHouse house;
        auto &theatre = *house.theatre;
        house.view().select(house.file(u"BILL-010-batch.md"_s));
        auto *list = Test::findItem(theatre.window()->contentItem(),
                                    [](const QQuickItem &item) { return item.inherits("QQuickListView"); });
        QVERIFY(list);
        list->forceActiveFocus(Qt::TabFocusReason);
        theatre.press(Qt::Key_S);
        QTRY_VERIFY(theatre.shows(u"보류"_s));
        theatre.press(Qt::Key_Down);
        theatre.press(Qt::Key_Down);
        theatre.press(Qt::Key_Return);
        QTRY_VERIFY(theatre.shows(u"되돌리기"_s));
        QVERIFY(read(house.file(u"BILL-010-batch.md"_s)).contains(u"| 상태 | `doing` |"));
        QVERIFY(list->hasActiveFocus());
        // While it fades the menu keeps shortcuts away.
        QTRY_VERIFY(!Test::findItem(theatre.window()->contentItem(), [](const QQuickItem &item) {
            return QByteArray(item.metaObject()->className()).startsWith("MenuRow");
        }));
        theatre.press(Qt::Key_Z, Qt::ControlModifier);
        QTRY_VERIFY(read(house.file(u"BILL-010-batch.md"_s)).contains(u"| 상태 | `todo` |"));
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void editingIsExactAndSaved()
    {
        IssueHouse house;
        auto &theatre = *house.theatre;
        const QString path = house.file(fourth);
        const QString before = read(path).replace(u'\n', u"\r\n"_s).replace(u"배경"_s, u"배\u00A0경"_s);
        write(path, before);
        house.view().reload();
        house.view().select(path);
        theatre.click(u"편집"_s);
        auto *editor = house.named(u"issueEditor"_s);
        QVERIFY(editor);
        editor->forceActiveFocus();
        theatre.press(Qt::Key_End, Qt::ControlModifier);
        // A syllable that is being put together is not in the text yet.
        QInputMethodEvent composing(u"가"_s, {});
        QCoreApplication::sendEvent(theatre.window(), &composing);
        QInputMethodEvent composed;
        composed.setCommitString(u"각"_s);
        QCoreApplication::sendEvent(theatre.window(), &composed);
        theatre.press(Qt::Key_Return);
        theatre.type(u"x"_s);
        theatre.press(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(read(path), before + u"각\r\nx"_s);
        theatre.press(Qt::Key_Z, Qt::ControlModifier);
        // Closing the window saves what the pause has not.
        house.theatre.reset();
        QVERIFY(read(path).size() < before.size() + 4);
        QVERIFY(read(path).startsWith(before.left(before.size() - 2)));
    }

    void readingAgainKeepsThePlace()
    {
        IssueHouse house;
        auto &theatre = *house.theatre;
        QString text = u"# BILL-004 · 긴 것\n\n"_s;
        for (int line = 0; line < 300; ++line) {
            text += u"line %1 of many\n"_s.arg(line);
        }
        write(house.file(fourth), text);
        house.view().reload();
        house.view().select(house.file(fourth));
        theatre.click(u"나란히"_s);
        auto *editor = house.named(u"issueEditor"_s);
        const auto lineOf = [editor] {
            const int at = editor->property("cursorPosition").toInt();
            return editor->property("text").toString().mid(at - 4, 16);
        };
        const auto height = [editor] {
            return editor->mapRectToScene(editor->property("cursorRectangle").toRectF()).top();
        };
        editor->forceActiveFocus();
        editor->setProperty("cursorPosition", text.indexOf(u"150 of"_s));
        theatre.type(u"typed "_s);
        for (int step = 0; step < 5; ++step) {
            theatre.press(Qt::Key_Up);
        }
        const QString line = lineOf();
        const double before = height();
        write(house.file(fourth), u"# BILL-004 · 긴 것\n\nnew\nnew\n"_s + text.mid(18) + u"at the end\n"_s);
        QTRY_VERIFY(theatre.shows(u"다시 읽기"_s));
        theatre.click(u"다시 읽기"_s);
        QVERIFY(editor->property("text").toString().contains(u"at the end"));
        QCOMPARE(lineOf(), line);
        QVERIFY(std::abs(height() - before) < 60); // the row that told of the conflict has gone
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void theOtherThingsOfAnIssueByKeys()
    {
        IssueHouse house;
        auto &theatre = *house.theatre;
        house.view().select(house.file(fourth));
        QStringList opened;
        DesktopOpener::replace([&opened](const QUrl &url) {
            opened.append(url.toLocalFile());
            return true;
        });
        auto *button = theatre.withText(u"이 이슈의 다른 일"_s);
        QVERIFY(button);
        for (int row = 0; row < 4; ++row) {
            button->forceActiveFocus(Qt::TabFocusReason);
            theatre.press(Qt::Key_Space);
            QTRY_VERIFY(theatre.shows(u"경로 복사"_s));
            theatre.picture(u"issues-menu"_s);
            for (int step = 0; step <= row; ++step) {
                theatre.press(Qt::Key_Down);
            }
            theatre.press(Qt::Key_Return);
            QTRY_VERIFY(!theatre.shows(u"경로 복사"_s));
            if (row == 2) {
                QCOMPARE(QGuiApplication::clipboard()->text(), house.file(fourth));
            }
        }
        DesktopOpener::replace({});
        QCOMPARE(opened, (QStringList {house.file(fourth), house.folder}));
        QCOMPARE(QGuiApplication::clipboard()->text(), u"BILL-004"_s);
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void aBoxIsTickedByTheMouse()
    {
        IssueHouse house;
        auto &theatre = *house.theatre;
        house.view().select(house.file(fourth));
        QTest::qWait(50);
        const auto *task = Test::findItem(theatre.window()->contentItem(), [](const QQuickItem &item) {
            return QByteArray(item.metaObject()->className()).startsWith("MarkdownTask")
                && !item.property("checked").toBool();
        });
        QVERIFY(task);
        const auto place = task->mapToScene({-12, 11}).toPoint();
        QTest::mouseClick(theatre.window(), Qt::LeftButton, {}, place);
        QTRY_COMPARE(read(house.file(fourth)).count(u"- [x]"), 4);
        QVERIFY(read(house.file(fourth)).contains(u"- [x] 겹친 환불을 찾는 점검 질의"));
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void aNewIssueByKeys()
    {
        IssueHouse house;
        auto &theatre = *house.theatre;
        theatre.press(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(theatre.shows(u"만들기"_s));
        QTRY_VERIFY(theatre.window()->activeFocusItem()->inherits("QQuickTextField"));
        theatre.type(u"refund window"_s);
        QTRY_VERIFY(theatre.shows(u"BILL-031-refund-window.md"_s));
        theatre.press(Qt::Key_Tab);
        theatre.press(Qt::Key_Tab);
        theatre.press(Qt::Key_Down); // a milestone from the list
        QTRY_VERIFY(theatre.shows(u"M2"_s));
        theatre.press(Qt::Key_Return);
        QTRY_VERIFY(!theatre.shows(u"M2"_s));
        for (int step = 0; step < 6; ++step) {
            theatre.press(Qt::Key_Tab); // to a button: the keys of the sheet are still its own
        }
        theatre.press(Qt::Key_Return, Qt::ControlModifier);
        QTRY_COMPARE(house.view().selectedId(), u"BILL-031"_s);
        QVERIFY(read(house.file(u"BILL-031-refund-window.md"_s)).startsWith(u"# BILL-031 · refund window"));
        QVERIFY(read(house.file(u"BILL-031-refund-window.md"_s)).contains(u"| 마일스톤 | M1 |"));
        QTRY_VERIFY(!theatre.shows(u"만들기"_s));
        QVERIFY(house.named(u"issueEditor"_s)->hasActiveFocus());
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void withoutAFolder()
    {
        {
            IssueHouse house(IssueHouse::Folder::None);
            house.theatre->picture(u"issues-onboarding"_s);
            while (!house.theatre->window()->activeFocusItem()->inherits("QQuickTextField")) {
                house.theatre->press(Qt::Key_Tab);
            }
            house.theatre->press(Qt::Key_Return);
            QTRY_COMPARE(house.view().folderState(), IssuesView::FolderState::Ready);
            QVERIFY(house.theatre->window()->activeFocusItem()->inherits("QQuickListView"));
            QCOMPARE(house.theatre->warnings(), QStringList());
        }
        IssueHouse house(IssueHouse::Folder::Gone);
        auto &theatre = *house.theatre;
        QVERIFY(theatre.shows(house.folder));
        theatre.picture(u"issues-missing"_s);
        Test::IssueFolderMaker::fill(house.folder);
        theatre.click(u"다시 시도"_s);
        QTRY_COMPARE(house.view().issueCount(), 20);
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void goesWithTheMainWindow()
    {
        ShellStage shell;
        shell.addProject(u"billing"_s, 0);
        auto theatre = std::make_unique<Theatre>(shell);
        theatre->press(Qt::Key_I, Qt::ControlModifier);
        const auto isOpen = [] {
            return std::ranges::any_of(QGuiApplication::topLevelWindows(), [](const QWindow *window) {
                return window->isVisible() && window->title() == u"이슈 — billing";
            });
        };
        QTRY_VERIFY(isOpen());
        theatre.reset();
        QVERIFY(!isOpen());
    }

    void aLinkFromAChatChoosesItsIssue()
    {
        IssueHouse house;
        house.shell.runtime().issues().openIssueFromChat(u"billing"_s, house.file(fourth));
        QCOMPARE(house.view().selectedId(), u"BILL-004"_s);
        house.shell.runtime().issues().openIssueFromChat(u"storefront"_s, house.file(u"x.md"_s));
        QCOMPARE(house.view().selectedId(), u"BILL-004"_s);
    }
};

VESK_TEST(IssuesWindowTest)
#include "IssuesWindowTest.moc"
