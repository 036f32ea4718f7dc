// Links of a conversation in a real window: followed, asked about, by pointer and by keyboard.
#include "ui/chat/ChatLinks.h"

#include "support/TestRegistry.h"
#include "ui/ChatStage.h"
#include "ui/controls/DesktopOpener.h"
#include "ui/controls/InstallUi.h"
#include "ui/controls/Theme.h"
#include "ui/Theatre.h"

#include <QDir>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

} // namespace

class ChatLinksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_opened.clear();
        DesktopOpener::replace([this](const QUrl &url) {
            m_opened << url.toString();
            return m_desktopKnows;
        });
        m_desktopKnows = true;
        m_stage = std::make_unique<Test::ChatStage>();
        write(u"src/a.cpp"_s);
        QVERIFY(QFile::link(u"/etc/passwd"_s, m_stage->path(u"out.md"_s)));
        m_engine = std::make_unique<QQmlEngine>();
        installUi(*m_engine);
        m_window = std::make_unique<QQuickWindow>();
        m_window->resize(700, 700);
        m_pane = Test::makeChatPane(*m_engine, *m_window, m_stage->chat());
        QVERIFY(m_pane);
        m_window->show();
        m_window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        DesktopOpener::replace({});
        m_window.reset();
        m_engine.reset();
        m_stage.reset();
    }

    void aClickOpensWhatThePolicyLetsThrough()
    {
        show(u"[연결](https://example.org/a)"_s);
        clickFirstLink(u"연결"_s);
        QTRY_COMPARE(m_opened, QStringList {u"https://example.org/a"_s});
        show(u"[원본](src/a.cpp:3)"_s);
        clickFirstLink(u"원본"_s);
        QTRY_COMPARE(m_opened.size(), 2);
        QCOMPARE(QUrl(m_opened.last()).toLocalFile(),
                 QFileInfo(m_stage->path(u"src/a.cpp"_s)).canonicalFilePath());
    }

    void whatTheProgramShowsItselfIsNotOpened()
    {
        QStringList shown;
        m_stage->chat().onFileLink = [&](const QString &path, const QString &realPath) {
            shown = {path, realPath};
            return path.endsWith(u".md"_s);
        };
        show(u"[바깥](out.md)"_s); // a link out of the project: else it would be asked about
        clickFirstLink(u"바깥"_s);
        QTRY_COMPARE(shown, (QStringList {m_stage->path(u"out.md"_s), u"/etc/passwd"_s}));
        show(u"[원본](src/a.cpp)"_s);
        clickFirstLink(u"원본"_s);
        QTRY_COMPARE(m_opened.size(), 1);
        QCOMPARE(shown.constFirst(), m_stage->path(u"src/a.cpp"_s));
        QVERIFY(!withText(u"이 링크를 열까요?"_s));
    }

    void whatIsDoubtfulIsAskedAbout_data()
    {
        QTest::addColumn<QString>("theme");
        QTest::newRow("dark") << u"dark"_s;
        QTest::newRow("light") << u"light"_s;
    }

    void whatIsDoubtfulIsAskedAbout()
    {
        QFETCH(const QString, theme);
        Theme::shared().setMode(theme);
        show(u"[https://bank.example/login](https://evil.example/login)"_s);
        clickFirstLink(u"https://bank.example/login"_s);
        QTRY_VERIFY(withText(u"이 링크를 열까요?"_s));
        QTest::qWait(200);
        save(u"link-asked-"_s + theme);
        QVERIFY(m_opened.isEmpty());
        QTest::keyClick(m_window.get(), Qt::Key_Return); // the button that has the focus opens nothing
        QTRY_VERIFY(!withText(u"이 링크를 열까요?"_s));
        QVERIFY(m_opened.isEmpty());
        clickFirstLink(u"https://bank.example/login"_s);
        QTRY_VERIFY(withText(u"열기"_s));
        QTest::qWait(150);
        click(withText(u"열기"_s));
        QTRY_COMPARE(m_opened, QStringList {u"https://evil.example/login"_s});
        Theme::shared().setMode(u"system"_s);
    }

    void whatCannotBeOpenedSaysWhy()
    {
        show(u"[없는 파일](src/none.cpp)"_s);
        clickFirstLink(u"없는 파일"_s);
        QTRY_VERIFY(withText(u"링크를 열지 않았습니다"_s));
        QVERIFY(withText(u"링크의 파일을 찾지 못했습니다."_s));
        QVERIFY(!withText(u"열기"_s));
        QTest::keyClick(m_window.get(), Qt::Key_Escape);
        QTRY_VERIFY(!withText(u"링크를 열지 않았습니다"_s));
        m_stage->chat().onFileLink = [](const QString &path, const QString &realPath) {
            return realPath.isEmpty() && path.endsWith(u"/A-1.md"_s);
        };
        show(u"[없는 이슈](issues/A-1.md:3)"_s);
        clickFirstLink(u"없는 이슈"_s);
        QTRY_VERIFY(withText(u"링크의 이슈 파일을 찾지 못했습니다 — "_s + m_stage->path(u"issues/A-1.md"_s)));
        QTest::keyClick(m_window.get(), Qt::Key_Escape);
        QTRY_VERIFY(!withText(u"링크를 열지 않았습니다"_s));
        m_desktopKnows = false;
        show(u"[원본](src/a.cpp)"_s);
        clickFirstLink(u"원본"_s);
        QTRY_VERIFY(withText(u"이 링크를 열 프로그램을 찾지 못했습니다."_s));
    }

    void theDiskIsAskedWhereALinkLeads()
    {
        const LinkedFiles files =
            lookAtLinkedFiles({m_stage->path(u"out.md"_s), m_stage->path(u"src"_s), u"/none"_s});
        QCOMPARE(files.value(m_stage->path(u"out.md"_s)).realPath, u"/etc/passwd"_s);
        QCOMPARE(files.value(m_stage->path(u"src"_s)).kind, LinkedFile::Kind::Folder);
        QVERIFY(!files.contains(u"/none"_s));
    }

    void theKeyboardReachesEveryLink()
    {
        show(
            u"앞 [하**나**](https://example.org/1) 뒤 [둘](https://example.org/2)\n\n| 표 |\n|---|\n| [셋](https://example.org/3) |"_s);
        QTRY_VERIFY(withLink(u"셋"_s));
        auto *text = withLink(u"둘"_s);
        QVERIFY(text);
        text->forceActiveFocus(Qt::TabFocusReason);
        QCOMPARE(text->property("selectedText").toString(), u"하나"_s);
        save(u"link-by-key"_s);
        QTest::keyClick(m_window.get(), Qt::Key_Return);
        QTest::keyClick(m_window.get(), Qt::Key_Tab);
        QCOMPARE(text->property("selectedText").toString(), u"둘"_s);
        QTest::keyClick(m_window.get(), Qt::Key_Return);
        QTest::keyClick(m_window.get(), Qt::Key_Tab);
        QVERIFY(!text->hasActiveFocus());
        QCOMPARE(text->property("selectedText").toString(), QString());
        QTest::keyClick(m_window.get(), Qt::Key_Return);
        QCOMPARE(m_opened,
                 (QStringList {u"https://example.org/1"_s, u"https://example.org/2"_s,
                               u"https://example.org/3"_s}));
        QTest::keyClick(m_window.get(), Qt::Key_Backtab);
        QCOMPARE(text->property("selectedText").toString(), u"둘"_s);
    }

private:
    void write(const QString &name)
    {
        QDir().mkpath(QFileInfo(m_stage->path(name)).path());
        QFile file(m_stage->path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    void show(const QString &text)
    {
        m_stage->chat().messages().reset({Test::row(ChatMessage::Role::Assistant, text)});
        m_window->grabWindow();
        QTest::qWait(50);
        m_window->grabWindow();
    }
    QQuickItem *withText(const QString &text)
    {
        return Test::findItem(m_window->contentItem(), [&](const QQuickItem &item) {
            return item.property("text").toString() == text;
        });
    }
    QQuickItem *withLink(const QString &shown)
    {
        return Test::findItem(m_window->contentItem(), [&](const QQuickItem &item) {
            const QString html = item.property("html").toString();
            return html.contains(u"<a "_s) && html.contains(shown) && item.inherits("QQuickTextEdit");
        });
    }
    void click(const QQuickItem *item, const QPointF &at = {})
    {
        QVERIFY(item);
        const QPointF place = at.isNull() ? QPointF(item->width() / 2, item->height() / 2) : at;
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, item->mapToScene(place).toPoint());
    }
    void clickFirstLink(const QString &shown)
    {
        QTRY_VERIFY(withLink(shown));
        click(withLink(shown), {12, 10});
    }
    void save(const QString &name)
    {
        if (const auto folder = qEnvironmentVariable("VESK_SHOTS"); !folder.isEmpty()) {
            QDir().mkpath(folder);
            m_window->grabWindow().save(folder + u'/' + name + u".png"_s);
        }
    }

    std::unique_ptr<Test::ChatStage> m_stage;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    QQuickItem *m_pane = nullptr;
    QStringList m_opened;
    bool m_desktopKnows = true;
};

VESK_TEST(ChatLinksTest)
#include "ChatLinksTest.moc"
