// A link is only followed where it says that it goes.
#include "markdown/ChatLinkPolicy.h"

#include "markdown/MarkdownLinks.h"
#include "markdown/MarkdownReader.h"
#include "support/TestRegistry.h"

#include <QtTest>

#include <rapidcheck.h>

using namespace Vesk;
using namespace Qt::StringLiterals;

using Action = LinkDecision::Action;
using FileKind = LinkedFile::Kind;

Q_DECLARE_METATYPE(Action)

namespace
{

const LinkFolders linkFolders {u"/home/u/app"_s, u"/home/u"_s};

LinkedFiles linkedFiles()
{
    const auto file = [](const QString &path) { return LinkedFile {FileKind::File, path, false}; };
    return {{u"/home/u/app"_s, {FileKind::Folder, u"/home/u/app"_s, true}},
            {u"/home/u/app/src"_s, {FileKind::Folder, u"/home/u/app/src"_s, true}},
            {u"/home/u/app/src/a.cpp"_s, file(u"/home/u/app/src/a.cpp"_s)},
            {u"/home/u/app/docs/한글 문서.md"_s, file(u"/home/u/app/docs/한글 문서.md"_s)},
            {u"/home/u/app/weird:12"_s, file(u"/home/u/app/weird:12"_s)},
            {u"/home/u/app/100%41.md"_s, file(u"/home/u/app/100%41.md"_s)},
            {u"/home/u/app/out.md"_s, file(u"/etc/passwd"_s)},
            {u"/home/u/app/tool"_s, {FileKind::File, u"/home/u/app/tool"_s, true}},
            {u"/home/u/app/go.desktop"_s, file(u"/home/u/app/go.desktop"_s)},
            {u"/home/u/app/pipe"_s, {FileKind::Other, u"/home/u/app/pipe"_s, false}},
            {u"/home/u/app2/b.md"_s, file(u"/home/u/app2/b.md"_s)},
            {u"/home/u/notes.md"_s, file(u"/home/u/notes.md"_s)}};
}

} // namespace

class ChatLinkPolicyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLinkLeadsWhereItSays_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<Action>("action");
        QTest::addColumn<QString>("target"); // what is opened
        QTest::addColumn<QString>("says");   // a part of the reason
        const auto row = [](const QString &address, const QString &shown, Action action,
                            const QString &target = {}, const QString &says = {}) {
            QTest::addRow("%s <%s>", qPrintable(address), qPrintable(shown))
                << address << shown << action << target << says;
        };
        row(u"https://example.org/a?b=1#c"_s, u"문서"_s, Action::OpenInBrowser,
            u"https://example.org/a?b=1#c"_s);
        row(u"http://localhost:3000"_s, u"http://localhost:3000"_s, Action::OpenInBrowser,
            u"http://localhost:3000"_s);
        row(u"https://www.example.org/a"_s, u"example.org"_s, Action::OpenInBrowser,
            u"https://www.example.org/a"_s);
        row(u"https://example.org"_s, u"https://example.org에서 보기"_s, Action::OpenInBrowser,
            u"https://example.org"_s);
        row(u"https://github.com/x/README.md"_s, u"README.md"_s, Action::OpenInBrowser,
            u"https://github.com/x/README.md"_s);
        row(u"https://한국.kr/"_s, u"한국"_s, Action::OpenInBrowser, u"https://xn--3e0b707e.kr/"_s);
        row(u"https://evil.example/"_s, u"https://bank.example/login"_s, Action::Ask,
            u"https://evil.example/"_s, u"bank.example"_s);
        row(u"https://evil.example/google.com"_s, u"google.com"_s, Action::Ask,
            u"https://evil.example/google.com"_s, u"evil.example"_s);
        row(u"https://google.com/"_s, u"gооgle.com"_s, Action::Ask, u"https://google.com/"_s, u"적혀"_s);
        row(u"https://google.com@evil.example/"_s, u"구글"_s, Action::Ask,
            u"https://google.com@evil.example/"_s, u"evil.example입니다"_s);
        row(u"https://gооgle.com/"_s, u"구글"_s, Action::Ask, {}, u"xn--"_s);
        row(u"https://xn--80ak6aa92e.com/"_s, u"사과"_s, Action::Ask, {}, u"аррӏе.com"_s);
        row(u"https://example.org/"_s, u"\u202Ehttps://example.org"_s, Action::Ask, {}, u"제어 문자"_s);
        row(u"https://example.org/\u202Egpj.exe"_s, u"a"_s, Action::Refuse, {}, u"제어 문자"_s);
        row(u"src/a.cpp\U000E0041"_s, u"a"_s, Action::Refuse, {}, u"제어 문자"_s); // beyond 16 bits
        row(u"java\tscript:alert(1)"_s, u"a"_s, Action::Refuse, {}, u"제어 문자"_s);
        row(u"javascript:alert(1)"_s, u"a"_s, Action::Refuse, {}, u"javascript:"_s);
        row(u"vscode://file/etc/passwd"_s, u"a"_s, Action::Refuse, {}, u"vscode:"_s);
        row(u"https://good.example\\@evil.example/"_s, u"a"_s, Action::Refuse, {}, u"읽을 수 없는"_s);
        row(u"https://"_s, u"a"_s, Action::Refuse, {}, u"읽을 수 없는"_s);
        row(u"#위"_s, u"a"_s, Action::Refuse);
        row({}, u"a"_s, Action::Refuse);

        const auto sourceFile = u"file:///home/u/app/src/a.cpp"_s;
        for (const auto &address :
             {u"src/a.cpp"_s, u"./src/../src/a.cpp"_s, u"src/a.cpp:12"_s, u"src/a.cpp:12:5"_s,
              u"src/a.cpp:3-9"_s, u"src/a.cpp#L12"_s, u"src/a.cpp#L12-L20"_s, u"/home/u/app/src/a.cpp"_s,
              u"~/app/src/a.cpp"_s, u"file:///home/u/app/src/a.cpp#L3"_s,
              u"file://localhost/home/u/app/src/a.cpp"_s, u"file:src/a.cpp"_s})
            row(address, u"a.cpp"_s, Action::OpenFile, sourceFile);
        row(u"src"_s, u"src"_s, Action::OpenFile, u"file:///home/u/app/src"_s);
        row(u"."_s, u"."_s, Action::OpenFile, u"file:///home/u/app"_s);
        row(u"docs/%ED%95%9C%EA%B8%80%20%EB%AC%B8%EC%84%9C.md"_s, u"a"_s, Action::OpenFile,
            u"file:///home/u/app/docs/한글 문서.md"_s);
        row(u"weird:12"_s, u"a"_s, Action::OpenFile, u"file:///home/u/app/weird:12"_s);
        row(u"100%41.md"_s, u"a"_s, Action::OpenFile, u"file:///home/u/app/100%2541.md"_s);
        row(u"out.md"_s, u"a"_s, Action::Ask, u"file:///etc/passwd"_s, u"심볼릭 링크"_s);
        row(u"../notes.md"_s, u"a"_s, Action::Ask, u"file:///home/u/notes.md"_s, u"밖의 파일"_s);
        row(u"/home/u/app2/b.md"_s, u"a"_s, Action::Ask, u"file:///home/u/app2/b.md"_s, u"밖의 파일"_s);
        row(u"%2e%2e/notes.md"_s, u"a"_s, Action::Ask, u"file:///home/u/notes.md"_s, u"밖의 파일"_s);
        row(u"tool"_s, u"a"_s, Action::Ask, u"file:///home/u/app/tool"_s, u"실행"_s);
        row(u"go.desktop"_s, u"a"_s, Action::Ask, u"file:///home/u/app/go.desktop"_s, u"실행"_s);
        row(u"src/a.cpp"_s, u"https://example.org"_s, Action::Ask, sourceFile, u"파일을 엽니다"_s);
        row(u"pipe"_s, u"a"_s, Action::Refuse, {}, u"보통 파일"_s);
        row(u"src/none.cpp"_s, u"a"_s, Action::Refuse, {}, u"찾지 못했습니다"_s);
        row(u"src/a.cpp%00.txt"_s, u"a"_s, Action::Refuse, {}, u"제어 문자"_s);
        row(u"file://server/share/a"_s, u"a"_s, Action::Refuse, {}, u"이 컴퓨터의"_s);
        row(u"//server/share/a"_s, u"a"_s, Action::Refuse, {}, u"이 컴퓨터의"_s);
    }

    void aLinkLeadsWhereItSays()
    {
        QFETCH(const QString, address);
        QFETCH(const QString, shown);
        QFETCH(const Action, action);
        QFETCH(const QString, target);
        QFETCH(const QString, says);
        const LinkDecision decision = ChatLinkPolicy::decide({address, shown}, linkFolders, linkedFiles());
        QCOMPARE(decision.action, action);
        if (!target.isEmpty())
            QCOMPARE(decision.url, QUrl(target));
        QVERIFY2(decision.reason.contains(says), qPrintable(decision.reason));
        QCOMPARE(decision.reason.isEmpty(), action == Action::OpenInBrowser || action == Action::OpenFile);
        QCOMPARE(decision.url.isEmpty(), action == Action::Refuse);
    }

    void withoutAProjectNoFileIsInside()
    {
        QCOMPARE(ChatLinkPolicy::decide({u"src/a.cpp"_s, {}}, {}, linkedFiles()).action, Action::Refuse);
        QCOMPARE(ChatLinkPolicy::decide({u"/home/u/notes.md"_s, {}}, {}, linkedFiles()).action, Action::Ask);
    }

    // Nothing but an address of the web or an existing file inside is ever opened unasked.
    void anythingElseIsNeverOpenedUnasked()
    {
        QVERIFY(rc::check([] {
            static const std::vector<std::string> parts {
                "http", "https",     "file",        "://",         ":",   "//",  "/",   "..", "~",     "@",
                "a",    "src/a.cpp", "/home/u/app", "example.org", "%2e", "%2F", "#L1", "\\", "\u202E"};
            QString address;
            for (const auto &part : *rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(parts)))
                address += QString::fromStdString(part);
            const LinkDecision decision =
                ChatLinkPolicy::decide({address, u"글"_s}, linkFolders, linkedFiles());
            const QString scheme = decision.url.scheme();
            const bool web = (scheme == u"http"_s || scheme == u"https"_s) && !decision.url.host().isEmpty()
                && decision.url.userInfo().isEmpty();
            const QString path = decision.url.path();
            const bool inside =
                scheme == u"file"_s && (path == u"/home/u/app"_s || path.startsWith(u"/home/u/app/"_s));
            RC_ASSERT(decision.action != Action::OpenInBrowser || web);
            RC_ASSERT(decision.action != Action::OpenFile || inside);
        }));
    }

    void addressesAreShownAsTheyAre()
    {
        QCOMPARE(ChatLinkPolicy::shownAddress(u"https://gооgle.com/위치?q=%ED%95%9C"_s),
                 u"https://xn--ggle-55da.com/위치?q=한"_s);
        QCOMPARE(ChatLinkPolicy::shownAddress(u"src/\u202Ea.cpp:12"_s), u"src/%E2%80%AEa.cpp:12"_s);
        QVERIFY(ChatLinkPolicy::shownAddress(QString(5000, u'a')).size() < 500);
    }

    void linksOfAParagraphAreFound()
    {
        const auto html =
            MarkdownReader::parse(u"[**굵은** `a<b`](src/a.cpp) 와 [둘](<https://x.org/?a=1&b=2>), "
                                  u"[셋](src/a.cpp) ![그림](p.png)"_s)
                .blocks.first()
                .html;
        const QList<ChatLink> links = MarkdownLinks::in(html);
        QCOMPARE(links.size(), 4);
        QCOMPARE(links[0].shown, u"굵은 a<b"_s);
        QCOMPARE(links[1].address, u"https://x.org/?a=1&b=2"_s);
        QCOMPARE(links[3].shown, u"[그림: 그림]"_s);
        QCOMPARE(MarkdownLinks::shownFor(html, u"src/a.cpp"_s), (QStringList {u"굵은 a<b"_s, u"셋"_s}));
    }
};

VESK_TEST(ChatLinkPolicyTest)
#include "ChatLinkPolicyTest.moc"
