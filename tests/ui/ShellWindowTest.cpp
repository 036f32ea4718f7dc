// The main window itself, driven by keys and the mouse. With VESK_SHOTS in the environment it leaves pictures
// there.
#include "sessions/ProjectChat.h"
#include "support/PastConversations.h"
#include "support/TestRegistry.h"
#include "ui/controls/Composition.h"
#include "ui/controls/Theme.h"
#include "ui/shell/AuditView.h"
#include "ui/shell/Workspace.h"
#include "ui/ShellStage.h"
#include "ui/Theatre.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QQuickWindow>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;
using Test::ShellStage;
using Test::Theatre;

namespace
{

void fill(ShellStage &stage)
{
    stage.runtime().start();
    stage.addProject(u"billing"_s, 0);
    stage.addProject(u"storefront"_s, 4);
    stage.addProject(u"handbook"_s, 5);
    ProjectChat &first = stage.addSession(u"billing"_s, u"결제 취소 웹훅 재시도"_s);
    ProjectChat &second = stage.addSession(u"billing"_s, u"환불 중복 테스트 보강"_s);
    stage.addSession(u"billing"_s, u"Session 4"_s);
    ProjectChat &deploy = stage.addSession(u"storefront"_s, u"배포 스크립트 정리"_s);
    ProjectChat &cart = stage.addSession(u"storefront"_s, u"장바구니 접근성 점검"_s);
    ProjectChat &notice = stage.addSession(u"handbook"_s, u"알림 문구 다듬기"_s);
    stage.addSession(u"handbook"_s, u"배포 안내서 목차"_s);
    ShellStage::run(
        first, u"결제 취소 웹훅이 두 번 오면 환불이 두 번 기록돼. 원인을 찾아 고치고 테스트도 붙여줘."_s);
    ShellStage::run(second, u"환불 테스트를 늘려줘"_s);
    ShellStage::finish(second, u"테스트 세 개를 더했습니다."_s);
    ShellStage::run(deploy, u"스테이징 배포 스크립트에서 안 쓰는 단계를 걷어내고 한 번 돌려봐."_s);
    ShellStage::askPermission(deploy, u"Bash"_s, u"./scripts/deploy.sh --env staging --skip-tests"_s);
    ShellStage::run(cart, u"접근성을 봐줘"_s);
    ShellStage::failRun(cart, u"API Error: 529 Overloaded"_s);
    ShellStage::run(notice, u"문구를 다듬어줘"_s);
    ShellStage::askQuestions(notice, 2);
}

} // namespace

class ShellWindowTest : public QObject
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
        ShellStage stage;
        stage.preferences().setTheme(theme == u"dark" ? ThemeChoice::Dark : ThemeChoice::Light);
        Theatre theatre(stage);
        QVERIFY(theatre.window());
        fill(stage);
        theatre.picture(theme + u"-main"_s);
        theatre.click(u"설정"_s);
        for (const QString &section : {u"general"_s, u"files"_s, u"about"_s}) {
            theatre.picture(theme + u"-settings-"_s + section);
            theatre.press(Qt::Key_Down);
        }
        theatre.press(Qt::Key_Home);
        theatre.press(Qt::Key_Escape);
        QTRY_VERIFY(!theatre.shows(u"글자 크기"_s));
        theatre.press(Qt::Key_4, Qt::ControlModifier);
        theatre.picture(theme + u"-approval"_s);
        theatre.press(Qt::Key_W, Qt::ControlModifier);
        theatre.picture(theme + u"-close-session"_s);
        theatre.press(Qt::Key_Escape);
        QTRY_VERIFY(!theatre.shows(u"일하는 중인 세션을 닫을까요?"_s));
        theatre.press(Qt::Key_O, Qt::ControlModifier);
        theatre.type(u"/nowhere/billing"_s);
        theatre.picture(theme + u"-add-project"_s);
        theatre.press(Qt::Key_Escape);
        QTRY_VERIFY(!theatre.shows(u"프로젝트 폴더 추가"_s));
        theatre.window()->close();
        theatre.picture(theme + u"-close-window"_s);
        theatre.press(Qt::Key_Escape);
        QTRY_VERIFY(!theatre.shows(u"창만 닫기"_s));
        for (int step = 0; step < 6; ++step) {
            theatre.press(Qt::Key_Plus, Qt::ControlModifier);
        }
        theatre.window()->resize(900, 600);
        theatre.picture(theme + u"-160-small"_s);
        theatre.press(Qt::Key_Comma, Qt::ControlModifier);
        theatre.picture(theme + u"-160-settings"_s);
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void emptyAndBrokenStates()
    {
        {
            ShellStage stage(ShellStage::Agent::Missing);
            QFile file(stage.path(u"projects.json"_s));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("[{\"alias\": 5}]");
            file.close();
            stage.runtime().start();
            Theatre theatre(stage);
            QVERIFY(theatre.window());
            theatre.picture(u"missing-and-broken"_s);
            theatre.press(Qt::Key_O, Qt::ControlModifier);
            theatre.picture(u"add-over-broken"_s);
            QCOMPARE(theatre.warnings(), QStringList());
        }
        ShellStage stage;
        stage.runtime().start();
        Theatre theatre(stage);
        QVERIFY(theatre.shows(u"프로젝트 폴더를 추가하면 여기에서 세션을 시작합니다"_s));
        theatre.picture(u"empty"_s);
        stage.addProject(u"billing"_s, 0);
        QVERIFY(!theatre.shows(u"프로젝트 폴더를 추가하면 여기에서 세션을 시작합니다"_s));
        theatre.picture(u"no-session"_s);
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void keysWork()
    {
        ShellStage stage;
        stage.runtime().start();
        stage.addProject(u"billing"_s, 0);
        const Theatre theatre(stage);
        QVERIFY(theatre.window());
        Workspace &workspace = theatre.workspace();
        theatre.press(Qt::Key_N, Qt::ControlModifier);
        theatre.press(Qt::Key_N, Qt::ControlModifier);
        theatre.press(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(workspace.tabs()->count(), 3);
        theatre.press(Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(workspace.currentIndex(), 0);
        theatre.press(Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(workspace.currentIndex(), 1);
        theatre.press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(workspace.currentIndex(), 0);
        theatre.press(Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(stage.preferences().textSize(), 110);
        theatre.press(Qt::Key_0, Qt::ControlModifier);
        QCOMPARE(stage.preferences().textSize(), 100);
        theatre.press(Qt::Key_W, Qt::ControlModifier);
        QCOMPARE(workspace.tabs()->count(), 2);
        QVERIFY(theatre.shows(u"설정"_s));
        theatre.press(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(!theatre.shows(u"설정"_s));
        theatre.press(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);

        // The background panel takes the keyboard, and gives it back to the composer.
        theatre.press(Qt::Key_B, Qt::ControlModifier);
        QVERIFY(theatre.shows(u"백그라운드"_s));
        theatre.press(Qt::Key_Escape);
        QVERIFY(!theatre.shows(u"백그라운드"_s));
        theatre.type(u"x"_s);
        QCOMPARE(workspace.currentChat()->composerInput(), u"x"_s);
        theatre.press(Qt::Key_Backspace);

        // Regions: from the composer to the sidebar, where arrows and letters move and Enter opens.
        theatre.press(Qt::Key_F6);
        theatre.press(Qt::Key_End);
        theatre.press(Qt::Key_Return);
        QCOMPARE(workspace.currentIndex(), 1);
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void altDigitsAnswerACard_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("once") << int(Qt::Key_1) << QByteArray("\"allow\"");
        QTest::newRow("always") << int(Qt::Key_2) << QByteArray("\"updatedPermissions\"");
        QTest::newRow("deny") << int(Qt::Key_3) << QByteArray("\"deny\"");
    }
    void altDigitsAnswerACard()
    {
        QFETCH(int, key);
        QFETCH(QByteArray, answer);
        ShellStage stage;
        stage.runtime().start();
        stage.addProject(u"billing"_s, 0);
        ProjectChat &chat = stage.addSession(u"billing"_s, u"일"_s);
        ShellStage::run(chat, u"go"_s);
        const Theatre theatre(stage);
        ShellStage::askPermission(chat, u"Bash"_s, u"make"_s);
        QTRY_VERIFY((theatre.press(key, Qt::AltModifier), !chat.pendingPermission()));
        QTRY_VERIFY(stage.heardByAgent().contains(answer));
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void aDroppedFolderIsProposed()
    {
        ShellStage stage;
        stage.runtime().start();
        const Theatre theatre(stage);
        QDir().mkpath(stage.path(u"wallet"_s));
        const auto drop = [&theatre](const QString &path) {
            QMimeData data;
            data.setUrls({QUrl::fromLocalFile(path)});
            Test::drop(*theatre.window(), data, {700, 450});
        };
        QFile file(stage.path(u"no-folder"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        drop(file.fileName());
        QVERIFY(!theatre.shows(u"프로젝트 폴더 추가"_s));
        drop(stage.path(u"wallet"_s));
        QTRY_VERIFY(theatre.shows(u"프로젝트 폴더 추가"_s));
        QVERIFY(theatre.shows(u"wallet"_s));
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void aSheetKeepsTheKeys()
    {
        ShellStage stage;
        stage.runtime().start();
        stage.addProject(u"billing"_s, 0);
        const Theatre theatre(stage);
        theatre.press(Qt::Key_O, Qt::ControlModifier);
        QVERIFY(theatre.shows(u"프로젝트 폴더 추가"_s));
        theatre.press(Qt::Key_N, Qt::ControlModifier);
        theatre.press(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(theatre.workspace().tabs()->count(), 0);
        QVERIFY(theatre.shows(u"설정"_s));

        QDir().mkpath(stage.path(u"money"_s));
        theatre.type(stage.path(u"money"_s));
        QCOMPARE(stage.runtime().catalogEntries().size(), 1);
        // The Enter that ends a syllable adds nothing.
        QInputMethodEvent composing(u"돈"_s, {});
        QGuiApplication::sendEvent(QGuiApplication::focusObject(), &composing);
        theatre.press(Qt::Key_Return);
        QCOMPARE(stage.runtime().catalogEntries().size(), 1);
        // Input methods end the syllable first and then hand the key on.
        for (const int key : {Qt::Key_Return, Qt::Key_Escape}) {
            QGuiApplication::sendEvent(QGuiApplication::focusObject(), &composing);
            QInputMethodEvent ended;
            QGuiApplication::sendEvent(QGuiApplication::focusObject(), &ended);
            theatre.press(key);
            QCOMPARE(stage.runtime().catalogEntries().size(), 1);
            QVERIFY(theatre.shows(u"프로젝트 폴더 추가"_s));
        }
        QTest::qWait(compositionEndMs + 10);
        theatre.press(Qt::Key_Return);
        QCOMPARE(stage.runtime().catalogEntries().size(), 2);
        QCOMPARE(stage.runtime().catalogEntries().constLast().alias, u"money"_s);
        QTRY_VERIFY(!theatre.shows(u"프로젝트 폴더 추가"_s));

        theatre.press(Qt::Key_O, Qt::ControlModifier);
        QVERIFY(theatre.shows(u"프로젝트 폴더 추가"_s));
        theatre.press(Qt::Key_Escape);
        QTRY_VERIFY(!theatre.shows(u"프로젝트 폴더 추가"_s));
        theatre.press(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(theatre.workspace().tabs()->count(), 1);
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void closingWhileSomethingRuns()
    {
        ShellStage stage;
        stage.runtime().start();
        stage.addProject(u"billing"_s, 0);
        ProjectChat &chat = stage.addSession(u"billing"_s, u"일"_s);
        ShellStage::run(chat, u"go"_s);
        const Theatre theatre(stage);
        theatre.press(Qt::Key_W, Qt::ControlModifier);
        QVERIFY(theatre.shows(u"일하는 중인 세션을 닫을까요?"_s));
        theatre.press(Qt::Key_Escape);
        QTRY_VERIFY(!theatre.shows(u"일하는 중인 세션을 닫을까요?"_s));
        QCOMPARE(theatre.workspace().tabs()->count(), 1);

        theatre.press(Qt::Key_Comma, Qt::ControlModifier); // another sheet does not stand in the way
        theatre.window()->close();
        QVERIFY(theatre.window()->isVisible());
        QTRY_VERIFY(theatre.shows(u"세션 1개가 실행 중입니다"_s));
        QTRY_VERIFY(!theatre.shows(u"고르면 바로 적용됩니다."_s));
        theatre.click(u"창만 닫기"_s);
        QTRY_VERIFY(!theatre.window()->isVisible());
        QVERIFY(chat.isRunning());
        stage.runtime().openMainWindow();
        QVERIFY(theatre.window()->isVisible());
        QTRY_VERIFY(!theatre.shows(u"세션 1개가 실행 중입니다"_s));
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void aToastLeadsToTheSessionThatWaits()
    {
        ShellStage stage;
        stage.runtime().start();
        stage.addProject(u"billing"_s, 0);
        stage.addSession(u"billing"_s, u"앞"_s);
        ProjectChat &waits = stage.addSession(u"billing"_s, u"뒤"_s);
        ProjectChat &other = stage.addSession(u"billing"_s, u"옆"_s);
        const Theatre theatre(stage);
        for (ProjectChat *chat : {&waits, &other})
            ShellStage::run(*chat, u"go"_s);
        QVERIFY(!theatre.shows(u"가기"_s));
        ShellStage::askPermission(waits, u"Bash"_s, u"ls"_s);
        QTRY_VERIFY(theatre.shows(u"가기"_s));
        ShellStage::finish(other, u"done"_s);
        QTRY_VERIFY(theatre.shows(u"billing · 끝남"_s));
        theatre.picture(u"toasts"_s);
        QSignalSpy frames(theatre.window(), &QQuickWindow::frameSwapped);
        theatre.window()->update();
        QTRY_VERIFY(!frames.isEmpty()); // a frame lays the toasts out
        theatre.click(u"가기"_s);
        QTRY_VERIFY(!theatre.shows(u"billing · Bash 승인 대기"_s));
        QCOMPARE(theatre.workspace().currentChat(), &waits);
        QVERIFY(theatre.shows(u"billing · 끝남"_s));
        QTest::mouseMove(theatre.window(), {300, 800}); // below the pointer it would stay
        QTRY_VERIFY(!theatre.shows(u"billing · 끝남"_s));
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void menusOfProjectsAndSessions()
    {
        ShellStage stage;
        stage.runtime().start();
        stage.addProject(u"billing"_s, 0);
        stage.addProject(u"storefront"_s, 1);
        stage.addSession(u"storefront"_s, u"장바구니"_s);
        const Theatre theatre(stage);

        theatre.click(u"더 보기"_s);
        QTRY_VERIFY(theatre.shows(u"제목 바꾸기…"_s));
        theatre.picture(u"header-menu"_s);
        theatre.click(u"제목 바꾸기…"_s);
        QTRY_VERIFY(theatre.shows(u"바꾸기"_s));
        theatre.type(u"cart"_s);
        theatre.picture(u"rename"_s);
        theatre.press(Qt::Key_Return);
        QCOMPARE(theatre.workspace().currentChat()->title(), u"cart"_s);
        QTRY_VERIFY(!theatre.shows(u"바꾸기"_s));

        theatre.click(u"billing"_s, Qt::RightButton);
        QTRY_VERIFY(theatre.shows(u"목록에서 빼기…"_s));
        theatre.picture(u"project-menu"_s);
        theatre.click(u"목록에서 빼기…"_s);
        QTRY_VERIFY(theatre.shows(u"프로젝트를 목록에서 뺄까요?"_s));
        theatre.picture(u"remove-project"_s);
        theatre.click(u"목록에서 빼기"_s);
        QTRY_COMPARE(stage.runtime().catalogEntries().size(), 1);
        QTRY_VERIFY(!theatre.shows(u"프로젝트를 목록에서 뺄까요?"_s));
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void settingsByKeyboardAndMouse()
    {
        ShellStage stage;
        stage.runtime().start();
        const Theatre theatre(stage);
        theatre.press(Qt::Key_Comma, Qt::ControlModifier);
        QTRY_VERIFY(theatre.shows(u"고르면 바로 적용됩니다."_s));
        theatre.click(u"어둡게"_s);
        QCOMPARE(stage.preferences().theme(), ThemeChoice::Dark);
        QVERIFY(Theme::shared().dark());
        theatre.press(Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(stage.preferences().textSize(), 110);
        theatre.press(Qt::Key_0, Qt::ControlModifier);

        // From the theme, where the click left the keyboard: past the text size to the language, then the
        // switches.
        for (int step = 0; step < 4; ++step)
            theatre.press(Qt::Key_Tab);
        theatre.press(Qt::Key_Right);
        QCOMPARE(stage.preferences().answerLanguage(), AnswerLanguage::Korean);
        for (int step = 0; step < 3; ++step) {
            theatre.press(Qt::Key_Tab);
            theatre.press(Qt::Key_Space);
        }
        QVERIFY(stage.preferences().keepAwake());
        QVERIFY(!stage.preferences().noticeMyTurn() && !stage.preferences().noticeFinished());

        theatre.click(u"파일 위치"_s);
        QTRY_VERIFY(theatre.shows(u"감사 기록"_s));
        QCOMPARE(stage.preferences().settingsPane(), u"files"_s);
        theatre.press(Qt::Key_Down);
        QTRY_VERIFY(theatre.shows(u"에이전트 프로그램"_s));
        theatre.press(Qt::Key_Home);
        QTRY_VERIFY(theatre.shows(u"고르면 바로 적용됩니다."_s));
        theatre.press(Qt::Key_Escape);
        QTRY_VERIFY(!theatre.shows(u"고르면 바로 적용됩니다."_s));
        stage.preferences().setSettingsPane(u"gone"_s); // by a later version
        theatre.press(Qt::Key_Comma, Qt::ControlModifier);
        QTRY_VERIFY(theatre.shows(u"고르면 바로 적용됩니다."_s));
        theatre.press(Qt::Key_Comma, Qt::ControlModifier);
        QTRY_VERIFY(!theatre.shows(u"고르면 바로 적용됩니다."_s));
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void pastConversations_data() { pictures_data(); }
    void pastConversations()
    {
        QFETCH(QString, theme);
        ShellStage stage;
        fill(stage);
        const Test::PastConversations billing(QDir::homePath(), QDir::homePath() + u"/src/billing"_s);
        billing.write(u"c1"_s, {Test::PastConversations::titled(u"결제 취소 웹훅 재시도"_s)}, 200);
        billing.write(u"c2"_s, {Test::PastConversations::said(u"refund rounding"_s)}, 4000);
        billing.write(u"c3"_s, {Test::PastConversations::titled(u"가"_s.repeated(60))}, 100000);
        for (int i = 0; i < 40; ++i) {
            billing.write(u"d%1"_s.arg(i), {Test::PastConversations::titled(u"정산 점검 %1"_s.arg(i))},
                          200000 + i);
        }
        const Theatre theatre(stage);
        stage.preferences().setTheme(theme == u"dark" ? ThemeChoice::Dark : ThemeChoice::Light);
        Theme::shared().setMode(theme);
        theatre.press(Qt::Key_R, Qt::ControlModifier);
        QTRY_VERIFY(theatre.shows(u"대화 43개"_s));
        theatre.picture(u"resume-"_s + theme);

        theatre.type(u"round"_s);
        QTRY_VERIFY(theatre.shows(u"대화 43개 중 1개"_s));
        theatre.press(Qt::Key_Return);
        QTRY_COMPARE(theatre.workspace().currentChat()->title(), u"refund rounding"_s);
        QCOMPARE(theatre.workspace().currentChat()->sessionId(), u"c2"_s);
        theatre.picture(u"resumed-"_s + theme);

        theatre.press(Qt::Key_R, Qt::ControlModifier);
        theatre.press(Qt::Key_Tab);
        theatre.press(Qt::Key_Delete);
        QTRY_VERIFY(theatre.shows(u"열려 있는 대화는 휴지통으로 옮길 수 없습니다. 탭을 먼저 닫으세요."_s));
        theatre.picture(u"resume-blocked-"_s + theme);
        theatre.window()->resize(900, 600);
        Theme::shared().setScale(1.6);
        theatre.picture(u"resume-160-small-"_s + theme);
        Theme::shared().setScale(1);
        theatre.window()->resize(1440, 900);
        theatre.press(Qt::Key_Escape); // the filter
        QTRY_VERIFY(theatre.shows(u"대화 43개"_s));
        theatre.press(Qt::Key_End);
        theatre.press(Qt::Key_Delete);
        QTRY_VERIFY(theatre.shows(u"대화를 휴지통으로 옮길까요?"_s));
        theatre.picture(u"resume-delete-"_s + theme);
        theatre.click(u"휴지통으로"_s);
        QTRY_VERIFY(theatre.shows(u"대화 42개"_s));
        QVERIFY(!QFile::exists(billing.path(u"d39"_s)));
        QTRY_VERIFY(theatre.shows(u"휴지통으로 옮겼습니다"_s)
                    && !theatre.shows(u"대화를 휴지통으로 옮길까요?"_s));
        theatre.picture(u"resume-trashed-"_s + theme);
        theatre.click(u"되돌리기"_s);
        QTRY_VERIFY(theatre.shows(u"대화 43개"_s));
        QVERIFY(QFile::exists(billing.path(u"d39"_s)) && !theatre.shows(u"휴지통으로 옮겼습니다"_s));
        theatre.press(Qt::Key_End); // the list has the keys again
        theatre.press(Qt::Key_Delete);
        QTRY_VERIFY(theatre.shows(u"대화를 휴지통으로 옮길까요?"_s));
        theatre.click(u"휴지통으로"_s);
        QTRY_VERIFY(theatre.shows(u"휴지통으로 옮겼습니다"_s)
                    && !theatre.shows(u"대화를 휴지통으로 옮길까요?"_s));
        billing.write(u"d39"_s, {Test::PastConversations::titled(u"다시 생긴 것"_s)});
        theatre.press(Qt::Key_Z, Qt::ControlModifier);
        QTRY_VERIFY(theatre.shows(u"되돌리지 못했습니다"_s));
        theatre.picture(u"resume-not-undone-"_s + theme);
        theatre.press(Qt::Key_Escape);
        QTRY_VERIFY(!theatre.shows(u"대화 42개"_s));
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void theLatestRecordsAreOneStepAway()
    {
        ShellStage stage;
        stage.runtime().start();
        const Theatre theatre(stage);
        auto *entries = theatre.window()->property("audit").value<AuditView *>()->entries();
        const QAbstractItemModelTester tester(entries,
                                              QAbstractItemModelTester::FailureReportingMode::QtTest);
        stage.auditLogger().log(
            AuditEvent::systemError(u"claude: unknown option '--frobnicate'\nsee --help"_s));
        QObject *shell = theatre.window()->contentItem()->childItems().constFirst();
        QVERIFY(QMetaObject::invokeMethod(shell, "openAuditLog"));
        QTRY_VERIFY(theatre.shows(u"최근 기록"_s));
        theatre.picture(u"audit-log"_s);
        QVERIFY(theatre.shows(u"SYS ERR claude: unknown option '--frobnicate'\nsee --help"_s));
        theatre.press(Qt::Key_Escape);
        QTRY_VERIFY(!theatre.shows(u"최근 기록"_s));
        QCOMPARE(theatre.warnings(), QStringList());
    }

    void theAuditLogsFailureStandsAcrossTheWindow()
    {
        ShellStage stage;
        stage.runtime().start();
        const Theatre theatre(stage);
        const QString title = u"감사 기록이 디스크에 안 남고 있습니다"_s;
        QVERIFY(!theatre.shows(title));
        QFile::remove(stage.path(u"audit.log"_s));
        QDir().mkpath(stage.path(u"audit.log"_s)); // a folder in the file's place cannot be written
        stage.auditLogger().log(AuditEvent::info(u"lost"_s));
        stage.runtime().auditWatch().refreshAuditWriteFailure();
        QVERIFY(theatre.shows(title));
        theatre.picture(u"audit-failure"_s);
        theatre.click(u"닫기(새로 유실되면 다시 알림)"_s);
        QVERIFY(!theatre.shows(title));
        QCOMPARE(theatre.warnings(), QStringList());
    }
};

VESK_TEST(ShellWindowTest)
#include "ShellWindowTest.moc"
