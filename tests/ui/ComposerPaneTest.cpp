// Writing a message with the keyboard, an input method, the clipboard and drops.
#include "sessions/DraftKeeper.h"
#include "support/TestRegistry.h"
#include "ui/ChatStage.h"
#include "ui/controls/InstallUi.h"
#include "ui/controls/Theme.h"
#include "ui/Theatre.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

class ComposerPaneTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_stage = std::make_unique<Test::ChatStage>();
        for (const auto &name : {u"src/webhook/cancel_handler.cpp"_s, u"tests/cancel_twice_test.cpp"_s,
                                 u"docs/설계.md"_s, u"notes.txt"_s}) {
            QDir().mkpath(QFileInfo(m_stage->path(name)).path());
            QFile file(m_stage->path(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        m_engine = std::make_unique<QQmlEngine>();
        m_warnings.clear();
        connect(m_engine.get(), &QQmlEngine::warnings, this, [this](const QList<QQmlError> &errors) {
            for (const auto &error : errors)
                m_warnings << error.toString();
        });
        installUi(*m_engine);
        m_window = std::make_unique<QQuickWindow>();
        m_window->resize(590, 700);
        m_pane = newPane();
        QVERIFY(m_pane);
        m_window->show();
        m_window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        focus();
        QVERIFY(m_editor);
    }

    void cleanup()
    {
        m_window.reset();
        m_engine.reset();
        m_stage.reset();
        QCOMPARE(m_warnings, QStringList());
    }

    void filesAreCompleted()
    {
        type("see @cancel");
        QTRY_VERIFY(isOpen() && count() == 2);
        save(u"files"_s);
        press(Qt::Key_Down);
        press(Qt::Key_Up);
        press(Qt::Key_Up); // goes round
        press(Qt::Key_Tab);
        QTRY_COMPARE(text(), u"see @src/webhook/cancel_handler.cpp "_s);
        QTRY_VERIFY(!isOpen());
        QVERIFY(m_editor->hasActiveFocus());
        // A path goes on behind its slash, and the blank that follows is not doubled.
        type("@src/we");
        QTRY_VERIFY(isOpen());
        press(Qt::Key_Return);
        QTRY_VERIFY(text().endsWith(u"cpp @src/webhook/cancel_handler.cpp "_s));
        QVERIFY2(!chat().isRunning(), "the Enter that takes does not send");
        press(Qt::Key_Return);
        QVERIFY(chat().isRunning());
    }

    void anImpatientTabWaitsForItsSearch()
    {
        type("@c");
        QTRY_VERIFY(isOpen());
        type("a");
        press(Qt::Key_Tab);
        QTRY_COMPARE(text(), u"@tests/cancel_twice_test.cpp "_s);
    }

    void commandsAreThoseOfTheSession()
    {
        QVERIFY(m_stage->run(u"먼저"_s));
        m_stage->say(
            {{u"type"_s, u"system"_s},
             {u"subtype"_s, u"init"_s},
             {u"session_id"_s, u"c1"_s},
             {u"capabilities"_s, QJsonArray {u"interrupt_receipt_v1"_s}},
             {u"slash_commands"_s, QJsonArray {u"review"_s, u"release-notes"_s, u"compact"_s, u"rename"_s}}});
        type("a/re");
        QVERIFY(!isOpen());
        type(" /RE");
        QVERIFY(isOpen());
        QCOMPARE(count(), 3);
        save(u"commands"_s);
        press(Qt::Key_Escape);
        QVERIFY(!isOpen());
        QVERIFY2(chat().currentActivity() != u"중단하는 중…"_s, "the list takes the first Esc");
        type("V");
        QVERIFY2(!isOpen(), "refused for this word");
        press(Qt::Key_Escape);
        QCOMPARE(chat().currentActivity(), u"중단하는 중…"_s);
        type(" /re");
        QVERIFY(isOpen());
        // By the mouse; the editor keeps the keyboard.
        auto *list = m_window->findChild<QQuickItem *>(u"completions"_s);
        QVERIFY(list);
        m_window->grabWindow();
        const auto third = list->mapToScene({40, list->height() - 8}).toPoint();
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, third);
        QCOMPARE(text(), u"a/re /REV /review "_s);
        QVERIFY(m_editor->hasActiveFocus());
        chat().setComposerInput(u"/re"_s);
        QVERIFY2(!isOpen(), "what is put in is no typing");
    }

    void aSyllableInTheMakingKeepsItsKeys()
    {
        type("@");
        compose(u"설"_s, {});
        QTRY_VERIFY(isOpen() && count() == 1);
        for (const auto key : {Qt::Key_Down, Qt::Key_Tab, Qt::Key_Escape})
            press(key);
        QVERIFY(isOpen());
        QCOMPARE(text(), u"@"_s);
        compose({}, u"설"_s);
        QCOMPARE(text(), u"@설"_s);
        QVERIFY(isOpen());
        QTest::qWait(60); // behind the key that ended the syllable
        press(Qt::Key_Tab);
        QTRY_COMPARE(text(), u"@docs/설계.md "_s);
        press(Qt::Key_A);
        QCOMPARE(text(), u"@docs/설계.md a"_s);
    }

    void sentMessagesComeBack()
    {
        chat().messages().reset({Test::row(ChatMessage::Role::User, u"하나"_s),
                                 Test::row(ChatMessage::Role::Assistant, u"답"_s),
                                 Test::row(ChatMessage::Role::User, u"둘\n/re"_s)});
        press(Qt::Key_Up);
        QCOMPARE(text(), u"둘\n/re"_s);
        press(Qt::Key_Up);
        QCOMPARE(text(), u"하나"_s);
        press(Qt::Key_Down);
        press(Qt::Key_Down);
        QCOMPARE(text(), QString());
        type("x");
        press(Qt::Key_Up);
        QCOMPARE(text(), u"x"_s);
    }

    void aDraftKeepsItsCaretAndItsFiles()
    {
        chat().restoreComposerDraft({u"앞 뒤"_s, 2, {m_stage->path(u"notes.txt"_s)}});
        QCOMPARE(m_editor->property("cursorPosition").toInt(), 2);
        type("x");
        QCOMPARE(chat().composerDraft(), (ComposerDraft {u"앞 x뒤"_s, 3, {m_stage->path(u"notes.txt"_s)}}));
        delete m_pane;
        m_pane = newPane();
        focus();
        QCOMPARE(text(), u"앞 x뒤"_s);
        QCOMPARE(m_editor->property("cursorPosition").toInt(), 3);
        save(u"draft"_s);
    }

    void theClipboardGivesTextFilesAndPictures()
    {
        auto *clipboard = QGuiApplication::clipboard();
        clipboard->setText(u"글"_s);
        press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(text(), u"글"_s);
        auto *files = new QMimeData;
        files->setUrls({QUrl::fromLocalFile(m_stage->path(u"notes.txt"_s)),
                        QUrl::fromLocalFile(m_stage->path(u"docs"_s))});
        clipboard->setMimeData(files);
        press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(chat().attachments(), QStringList {m_stage->path(u"notes.txt"_s)});
        QImage image(400, 300, QImage::Format_RGB32);
        image.fill(Qt::darkCyan);
        clipboard->setImage(image);
        press(Qt::Key_V, Qt::ControlModifier);
        save(u"saving"_s);
        QTRY_COMPARE(chat().attachments().size(), 2);
        QTest::qWait(200);
        save(u"chips"_s);
        QCOMPARE(text(), u"글"_s);
        clipboard->clear();
    }

    void dropsAreTakenAnywhereOnTheSurface()
    {
        QMimeData text;
        text.setText(u"글"_s);
        QVERIFY(!drop(text));
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(m_stage->path(u"notes.txt"_s))});
        QVERIFY(drop(files));
        QCOMPARE(chat().attachments(), QStringList {m_stage->path(u"notes.txt"_s)});
        QMimeData picture;
        picture.setUrls({QUrl(u"https://example.org/x.png"_s)});
        picture.setImageData(QImage(20, 20, QImage::Format_RGB32));
        QVERIFY(drop(picture));
        QTRY_COMPARE(chat().attachments().size(), 2);
        QVERIFY(chat().attachments().last().contains(u"/attach-"_s));
    }

private:
    [[nodiscard]] ProjectChat &chat() { return m_stage->chat(); }
    [[nodiscard]] QString text() const { return m_editor->property("text").toString(); }
    [[nodiscard]] QQuickItem *list() const { return m_window->findChild<QQuickItem *>(u"completions"_s); }
    [[nodiscard]] bool isOpen() const { return list() && list()->isVisible() && count() > 0; }
    [[nodiscard]] int count() const { return list()->property("count").toInt(); }

    QQuickItem *newPane() { return Test::makeChatPane(*m_engine, *m_window, chat()); }
    void focus()
    {
        QMetaObject::invokeMethod(m_pane, "focusComposer");
        m_editor = m_window->activeFocusItem();
    }
    void type(const char *ascii)
    {
        for (; *ascii != 0; ++ascii)
            QTest::keyClick(m_window.get(), *ascii);
    }
    void press(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(m_window.get(), Qt::Key(key), modifiers);
    }
    void compose(const QString &preedit, const QString &commit)
    {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QCoreApplication::sendEvent(m_editor, &event);
    }
    bool drop(const QMimeData &data) { return Test::drop(*m_window, data, {300, 60}); }
    void save(const QString &name)
    {
        const auto folder = qEnvironmentVariable("VESK_SHOTS");
        for (const auto &theme : folder.isEmpty() ? QStringList() : QStringList {u"dark"_s, u"light"_s}) {
            Theme::shared().setMode(theme);
            QTest::qWait(120);
            m_window->grabWindow().save(folder + u"/composer-"_s + name + u'-' + theme + u".png"_s);
        }
        Theme::shared().setMode(u"system"_s);
    }

    std::unique_ptr<Test::ChatStage> m_stage;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    QStringList m_warnings;
    QQuickItem *m_pane = nullptr;
    QQuickItem *m_editor = nullptr;
};

VESK_TEST(ComposerPaneTest)
#include "ComposerPaneTest.moc"
