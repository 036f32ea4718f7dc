// The surface of a session in a real window: keys, cards, composing, and pictures of it on request.
#include "support/TestRegistry.h"
#include "ui/chat/TimelineView.h"
#include "ui/ChatStage.h"
#include "ui/controls/InstallUi.h"
#include "ui/controls/Theme.h"
#include "ui/Theatre.h"

#include <QDir>
#include <QElapsedTimer>
#include <QInputMethodEvent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

QStringList heardWarnings; // NOLINT: the message handler has no context

void hear(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type != QtDebugMsg && type != QtInfoMsg) {
        heardWarnings << message;
    }
    fprintf(stderr, "%s\n", qPrintable(message));
}

} // namespace

class ChatPaneTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        heardWarnings.clear();
        qInstallMessageHandler(hear);
        m_stage = std::make_unique<Test::ChatStage>();
        m_engine = std::make_unique<QQmlEngine>();
        installUi(*m_engine);
        m_window = std::make_unique<QQuickWindow>();
        m_window->resize(590, 900);
        m_pane = Test::makeChatPane(*m_engine, *m_window, m_stage->chat());
        QVERIFY(m_pane);
        m_window->show();
        m_window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        m_window.reset();
        m_engine.reset();
        m_stage.reset();
        qInstallMessageHandler(nullptr);
        QCOMPARE(heardWarnings, QStringList());
    }

    void enterSendsAndShiftEnterBreaks()
    {
        auto *editor = focusEditor();
        QTest::keyClick(m_window.get(), Qt::Key_A);
        QTest::keyClick(m_window.get(), Qt::Key_Return, Qt::ShiftModifier);
        QTest::keyClick(m_window.get(), Qt::Key_B);
        QCOMPARE(m_stage->chat().composerInput(), u"a\nb"_s);
        QTest::keyClick(m_window.get(), Qt::Key_Return);
        QVERIFY(m_stage->chat().isRunning());
        QCOMPARE(m_stage->chat().messages().rows().first().text, u"a\nb"_s);
        QCOMPARE(editor->property("text").toString(), QString());
        // A draft belongs to its session and comes back from it.
        m_stage->chat().setComposerInput(u"초안"_s);
        QCOMPARE(editor->property("text").toString(), u"초안"_s);
    }

    void enterNeverSendsWhileASyllableIsComposed()
    {
        auto *editor = focusEditor();
        const auto compose = [editor](const QString &preedit, const QString &commit) {
            QInputMethodEvent event(preedit, {});
            event.setCommitString(commit);
            QCoreApplication::sendEvent(editor, &event);
        };
        compose(u"하"_s, {});
        QTest::keyClick(m_window.get(), Qt::Key_Return);
        QTest::keyClick(m_window.get(), Qt::Key_Escape);
        QVERIFY(!m_stage->chat().isRunning());
        // The key that ended the syllable comes right behind its text.
        QElapsedTimer sinceEnd;
        sinceEnd.start();
        compose({}, u"한"_s);
        QTest::keyClick(m_window.get(), Qt::Key_Return);
        if (sinceEnd.elapsed() >= 50)
            QSKIP("this machine is too slow to press the key right behind the syllable");
        QVERIFY(!m_stage->chat().isRunning());
        QCOMPARE(m_stage->chat().composerInput(), u"한"_s);
        QTRY_VERIFY((QTest::keyClick(m_window.get(), Qt::Key_Return), m_stage->chat().isRunning()));
        QCOMPARE(m_stage->chat().messages().rows().first().text, u"한"_s);
    }

    void aPermissionCardAnswersByButtonsOnly()
    {
        focusEditor();
        QVERIFY(m_stage->run(u"배포해"_s));
        m_stage->chat().setComposerInput(u"쓰다 만 글"_s);
        m_stage->askPermission(u"r1"_s, u"Bash"_s, {{u"command"_s, u"ls"_s}});
        draw();
        save(u"card"_s);
        QVERIFY(button(u"한 번 허용"_s));
        QVERIFY2(!button(u"항상 허용"_s), "there is nothing that always could write");
        QCOMPARE(m_window->activeFocusItem()->objectName(), u"composerText"_s);
        auto *allow = button(u"한 번 허용"_s);
        allow->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(m_window.get(), Qt::Key_Return);
        QVERIFY2(m_stage->chat().pendingPermission(), "Enter is no answer");
        click(allow);
        QVERIFY(!m_stage->chat().pendingPermission());
        draw();
        QVERIFY(!button(u"한 번 허용"_s));
    }

    void aReplacedRequestIsNotAnsweredByALateClick()
    {
        QVERIFY(m_stage->run(u"배포해"_s));
        m_stage->askPermission(u"r1"_s, u"Bash"_s, {{u"command"_s, u"ls"_s}});
        QElapsedTimer sinceReplaced;
        sinceReplaced.start();
        m_stage->askPermission(u"r2"_s, u"Bash"_s, {{u"command"_s, u"rm -rf x"_s}});
        draw();
        click(button(u"한 번 허용"_s));
        if (sinceReplaced.elapsed() >= 500)
            QSKIP("this machine is too slow to press a button right behind the replacement");
        QVERIFY(m_stage->chat().pendingPermission());
        QTRY_VERIFY((QMetaObject::invokeMethod(m_pane, "deny"), !m_stage->chat().pendingPermission()));
    }

    void questionsAreAnsweredWithDigits()
    {
        QVERIFY(m_stage->run(u"훑어줘"_s));
        askTwoQuestions();
        draw();
        auto *send = button(u"답 보내기"_s);
        QVERIFY(send);
        QVERIFY(!send->isEnabled());
        auto *option = Test::findItem(
            m_pane, [](const QQuickItem &item) { return item.property("label").toString() == u"고객"; });
        QVERIFY(option);
        option->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(m_window.get(), Qt::Key_1);
        QTest::keyClick(m_window.get(), Qt::Key_4);
        QVERIFY(send->isEnabled());
        QTest::keyClick(m_window.get(), Qt::Key_Return, Qt::ControlModifier);
        QVERIFY(!m_stage->chat().pendingQuestion());
    }

    void pickersAndEscape()
    {
        focusEditor();
        QVERIFY(m_stage->run(u"일"_s));
        draw();
        auto *picker = Test::findItem(
            m_pane, [](const QQuickItem &item) { return item.property("name").toString() == u"권한 모드"; });
        QVERIFY(picker);
        click(picker);
        draw();
        save(u"mode-menu"_s);
        QTest::keyClick(m_window.get(), Qt::Key_Escape);
        QVERIFY2(m_stage->chat().currentActivity() != u"중단하는 중…", "the menu takes the first Esc");
        QTest::qWait(150);
        focusEditor();
        QTest::keyClick(m_window.get(), Qt::Key_Escape);
        QCOMPARE(m_stage->chat().currentActivity(), u"중단하는 중…"_s);
    }

    void aLongTranscriptStaysLight()
    {
        QList<ChatMessage> rows;
        for (int i = 0; i < 4000; ++i) {
            rows << Test::row(
                i % 2 == 0 ? ChatMessage::Role::User : ChatMessage::Role::Assistant,
                u"**%1** 번째 줄입니다. `code`\n\n- 하나\n- 둘\n\n```cpp\nint x;\n```"_s.arg(i));
        }
        m_stage->chat().messages().reset(rows);
        draw();
        auto *view = m_pane->findChild<TimelineView *>();
        QVERIFY(view);
        for (int page = 0; page < 20; ++page) {
            view->scrollByPages(-1);
            m_window->grabWindow();
        }
        QVERIFY(view->liveCount() < 40);
    }

    void bothThemesHaveTheirPictures_data()
    {
        QTest::addColumn<QString>("theme");
        QTest::newRow("dark") << u"dark"_s;
        QTest::newRow("light") << u"light"_s;
    }

    void theComposerStaysInView_data()
    {
        QTest::addColumn<QString>("theme");
        QTest::addColumn<bool>("permission");
        QTest::addColumn<double>("scale");
        QTest::newRow("permission") << u"dark"_s << true << 1.0;
        QTest::newRow("questions") << u"light"_s << false << 1.0;
        QTest::newRow("large text") << u"light"_s << true << 1.6;
    }
    void theComposerStaysInView()
    {
        QFETCH(const QString, theme);
        QFETCH(const bool, permission);
        QFETCH(const double, scale);
        Theme::shared().setMode(theme);
        Theme::shared().setScale(scale);
        const auto reset = qScopeGuard([] {
            Theme::shared().setMode(u"system"_s);
            Theme::shared().setScale(1);
        });
        QVERIFY(m_stage->run(u"배포해"_s));
        for (int sent = 0; sent < 5; ++sent) {
            m_stage->chat().send(u"기다리는 말 %1"_s.arg(sent));
        }
        for (int file = 0; file < 12; ++file) {
            QFile attached(m_stage->path(u"첨부 %1.txt"_s.arg(file)));
            QVERIFY(attached.open(QIODevice::WriteOnly));
            QVERIFY(m_stage->chat().addAttachment(attached.fileName()));
        }
        m_stage->chat().setComposerInput(u"긴 글\n"_s.repeated(20));
        if (permission) {
            m_stage->askPermission(u"p"_s, u"Bash"_s, {{u"command"_s, u"echo 1\n"_s.repeated(40)}});
        } else {
            askTwoQuestions();
        }
        auto *editor = focusEditor();
        // A pane of 300 by 400 less its tabs and its header; then a larger one.
        for (const QSizeF &size : {QSizeF(300, 332), QSizeF(420, 560)}) {
            m_pane->setSize(size);
            draw();
            save(u"small-%1-%2-%3"_s.arg(permission ? u"permission"_s : u"questions"_s)
                     .arg(size.width())
                     .arg(scale));
            const QQuickItem *composer = editor->parentItem()->parentItem();
            const double top = composer->mapToItem(m_pane, {0, 0}).y();
            QVERIFY2(top >= 0 && top + composer->height() < size.height(), qPrintable(QString::number(top)));
            auto *send = Test::findItem(m_pane, [](const QQuickItem &item) {
                return item.property("iconName").toString() == u"send";
            });
            QVERIFY(send && send->mapToItem(m_pane, {0, send->height()}).y() <= size.height());
            // What is pushed out of sight comes back with the keyboard.
            for (const QString &name : {permission ? u"거부"_s : u"답 없이 진행"_s, u"대기 5"_s}) {
                auto *item = button(name);
                if (!item) {
                    continue;
                }
                item->forceActiveFocus(Qt::TabFocusReason);
                const double y = item->mapToItem(m_pane, {0, 0}).y();
                QVERIFY2(y >= 0 && y + item->height() <= top, qPrintable(QString::number(y)));
            }
            editor->forceActiveFocus();
        }
    }

    void bothThemesHaveTheirPictures()
    {
        QFETCH(const QString, theme);
        Theme::shared().setMode(theme);
        playWork();
        m_stage->chat().setComposerInput(u"고친 뒤에는 변경 이력 문서에도 한 줄 남겨줘"_s);
        focusEditor();
        draw();
        save(u"work-"_s + theme);
        m_stage->askPermission(
            u"p1"_s, u"Bash"_s,
            {{u"command"_s, u"./scripts/deploy.sh --env staging --skip-tests"_s},
             {u"description"_s, u"스테이징에 한 번 배포"_s},
             {u"timeout"_s, 600000}},
            {QJsonObject {{u"type"_s, u"addRules"_s},
                          {u"behavior"_s, u"allow"_s},
                          {u"destination"_s, u"localSettings"_s},
                          {u"rules"_s,
                           QJsonArray {QJsonObject {{u"toolName"_s, u"Bash"_s},
                                                    {u"ruleContent"_s, u"./scripts/deploy.sh:*"_s}}}}}});
        draw();
        save(u"permission-"_s + theme);
        m_stage->chat().respondToPermission(PermissionChoice::Once);
        askTwoQuestions();
        draw();
        QTest::mouseClick(
            m_window.get(), Qt::LeftButton, {},
            Test::findItem(
                m_pane, [](const QQuickItem &item) { return item.property("label").toString() == u"고객"; })
                ->mapToScene({20, 10})
                .toPoint());
        draw();
        save(u"questions-"_s + theme);
        m_stage->chat().respondToQuestion({{}, {}});
        playMarkdown();
        draw();
        save(u"markdown-"_s + theme);
        // The least room with the largest text.
        Theme::shared().setScale(1.6);
        m_pane->setSize({420, 560});
        draw();
        save(u"narrow-"_s + theme);
        Theme::shared().setScale(1);
        m_pane->setSize(QSizeF(m_window->size()));
        // Nothing moves when nothing happens.
        QSignalSpy frames(m_window.get(), &QQuickWindow::frameSwapped);
        m_stage->chat().stop();
        QTRY_VERIFY(!m_stage->chat().isRunning());
        QTest::qWait(500);
        frames.clear();
        QTest::qWait(1500);
        QVERIFY2(frames.size() <= 4, qPrintable(QString::number(frames.size()))); // the caret alone blinks
        Theme::shared().setMode(u"system"_s);
    }

private:
    QQuickItem *focusEditor()
    {
        QMetaObject::invokeMethod(m_pane, "focusComposer");
        return m_window->activeFocusItem();
    }

    QQuickItem *button(const QString &text)
    {
        return Test::findItem(m_pane, [&text](const QQuickItem &item) {
            return item.inherits("QQuickAbstractButton") && item.property("text").toString() == text;
        });
    }

    void click(QQuickItem *item)
    {
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {},
                          item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
    }

    void draw()
    {
        QTest::qWait(70); // the text of a stream is read every fifty milliseconds
        m_window->grabWindow();
    }

    void save(const QString &name)
    {
        if (const auto folder = qEnvironmentVariable("VESK_SHOTS"); !folder.isEmpty()) {
            QDir().mkpath(folder);
            m_window->grabWindow().save(folder + u'/' + name + u".png"_s);
        }
    }

    void playWork()
    {
        auto &rows = m_stage->chat().messages();
        rows.append(Test::row(
            ChatMessage::Role::Assistant,
            u"취소 웹훅은 결제 대행 쪽에서 **최대 5번**까지 다시 보냅니다. 지금 코드는 그 사실을 모르는 채로 "
            "짜여 있습니다. 어떻게 다룰지 정해 주시면 바로 고치겠습니다."_s));
        QVERIFY(m_stage->run(
            u"결제 취소 웹훅이 두 번 오면 환불이 두 번 기록돼. 원인을 찾아 고치고 테스트도 붙여줘."_s));
        const QStringList first {u"Read"_s, u"Read"_s, u"Grep"_s, u"Read"_s, u"Grep"_s, u"Read"_s, u"Bash"_s};
        for (int i = 0; i < first.size(); ++i) {
            m_stage->useTool(u"a%1"_s.arg(i), first.at(i), {{u"file_path"_s, u"/a/b/c.cpp"_s}});
            m_stage->toolResult(u"a%1"_s.arg(i), u"ok"_s);
        }
        m_stage->stream(u"원인을 찾았습니다. `handleCancel`이 환불을 기록한 **뒤에** 이벤트 번호를 "
                        u"저장합니다. 두 웹훅이 1초 안에 "
                        "오면 둘 다 검사를 지나갑니다.\n\n- 이벤트 번호를 같은 트랜잭션에서 **먼저** "
                        "넣습니다.\n- 이미 있는 "
                        "번호면 기록 없이 200만 돌려줍니다."_s);
        m_stage->useTool(u"b1"_s, u"Edit"_s, {{u"file_path"_s, u"/src/webhook/cancel_handler.cpp"_s}});
        m_stage->toolResult(u"b1"_s, u"done"_s);
        m_stage->useTool(u"b2"_s, u"Write"_s, {{u"file_path"_s, u"/src/tests/cancel_twice_test.cpp"_s}});
        m_stage->toolResult(u"b2"_s, u"done"_s);
        m_stage->useTool(u"b3"_s, u"Bash"_s, {{u"command"_s, u"cmake --build build -j 16"_s}});
        m_stage->toolResult(u"b3"_s,
                            u"event_store.cpp:41: error: 'insertOnce' was not declared in this scope\n"
                            "ninja: build stopped: subcommand failed."_s,
                            true);
        m_stage->usage(124000);
        m_stage->stream(
            u"선언이 머리말 파일에 빠져 있어 빌드가 멈췄습니다. `event_store.h`에 `insertOnce`를 더하고, "
            u"같은 취소를 "
            "동시에 두 번 보내는 테스트를 다시 돌리겠습니다. 이 테스트는 고치기 전의 코드에서는 반드시"_s);
        m_stage->chat().send(u"고친 뒤에는 변경 이력 문서에도 한 줄 남겨줘"_s);
    }

    void playMarkdown()
    {
        m_stage->chat().appendSystemNote(u"이 스레드로 답장하면 세션에 전달됩니다"_s);
        m_stage->stream(
            u"\n\n# 큰 제목\n\n## 다음 제목\n\n1. 첫째\n   - 안쪽 항목\n2. 둘째\n\n> 인용한 글입니다.\n\n"
            "```cpp\nif (seen.insertOnce(id) != Added) {\n    return Reply::ok();\n}\n```\n\n"
            "| 열 | 값 | 설명 |\n|---|--:|---|\n| `timeout` | 600000 | [문서](https://example.org) |\n"
            "| 이름 | 12 | 짧음 |\n\n---\n\n- [x] 끝낸 일\n- [ ] 남은 일"_s);
    }

    void askTwoQuestions()
    {
        m_stage->askQuestions(
            u"q1"_s,
            {QJsonObject {
                 {u"question"_s, u"환불 표의 새 색인은 언제 만들까요?"_s},
                 {u"header"_s, u"마이그레이션"_s},
                 {u"options"_s,
                  QJsonArray {
                      Test::option(u"출시 전에 따로 만들기"_s,
                                   u"쓰기를 막지 않는 방식으로 약 12분. 실패해도 출시와 무관합니다."_s),
                      Test::option(u"출시와 함께 만들기"_s,
                                   u"한 번에 끝나지만 그동안 환불 화면이 느려집니다."_s)}}},
             QJsonObject {
                 {u"question"_s, u"취소 실패 알림은 누구에게 보낼까요?"_s},
                 {u"header"_s, u"알림"_s},
                 {u"multiSelect"_s, true},
                 {u"options"_s,
                  QJsonArray {Test::option(u"운영 채널"_s, u"지금도 모든 결제 경보가 모이는 곳입니다."_s),
                              Test::option(u"고객"_s)}}}});
    }

    std::unique_ptr<Test::ChatStage> m_stage;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    QQuickItem *m_pane = nullptr;
};

VESK_TEST(ChatPaneTest)
#include "ChatPaneTest.moc"
