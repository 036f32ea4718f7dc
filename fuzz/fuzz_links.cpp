// Any link leads into the web or to a file of the project, or is not followed unasked, and what is said of it
// hides nothing. The first line is an address, the rest the text that it stands under, and a Markdown text of
// its own.
#include "markdown/ChatLinkPolicy.h"
#include "markdown/MarkdownLinks.h"
#include "markdown/MarkdownReader.h"

#include <QUrl>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

using namespace Vesk;

namespace
{

using Action = LinkDecision::Action;

void expect(bool holds)
{
    if (!holds)
        std::abort();
}

bool hidesNothing(const QString &shown)
{
    const auto signs = shown.toUcs4();
    return std::none_of(signs.begin(), signs.end(), [](char32_t sign) {
        const auto category = QChar::category(sign);
        return category == QChar::Other_Control || category == QChar::Other_Format
            || category == QChar::Separator_Line || category == QChar::Separator_Paragraph;
    });
}

// What a browser takes for the host: behind the user's name, before the port and the path.
QString writtenHost(const QString &address)
{
    QString rest = address.mid(address.indexOf(u':') + 1);
    while (rest.startsWith(u'/'))
        rest.remove(0, 1);
    const auto end = std::find_if(rest.begin(), rest.end(),
                                  [](QChar c) { return c == u'/' || c == u'\\' || c == u'?' || c == u'#'; });
    rest.truncate(end - rest.begin());
    rest = rest.mid(rest.lastIndexOf(u'@') + 1);
    if (!rest.startsWith(u'['))
        rest = rest.section(u':', 0, 0);
    return rest;
}

void check(const ChatLink &link)
{
    const LinkFolders folders {QStringLiteral("/home/u/app"), QStringLiteral("/home/u")};
    LinkedFiles files {{folders.project, {LinkedFile::Kind::Folder, folders.project, true}}};
    for (const QString &path : ChatLinkPolicy::pathsIn(link.address, folders)) {
        expect(path.startsWith(u'/'));
        files.insert(path, {LinkedFile::Kind::File, path, false});
    }
    const LinkDecision decision = ChatLinkPolicy::decide(link, folders, files);
    const bool opens = decision.action == Action::OpenInBrowser || decision.action == Action::OpenFile;
    expect(opens == decision.reason.isEmpty());
    expect((decision.action == Action::Refuse) == decision.url.isEmpty());
    expect(hidesNothing(decision.address) && hidesNothing(ChatLinkPolicy::shownAddress(link.address)));
    const bool web = decision.url.scheme() == u"http" || decision.url.scheme() == u"https";
    if (opens || web)
        expect(web == (decision.action == Action::OpenInBrowser || decision.action == Action::Ask));
    if (decision.action == Action::OpenInBrowser) {
        expect(decision.url.userInfo().isEmpty());
        expect(QUrl(QStringLiteral("http://") + writtenHost(link.address)).host() == decision.url.host());
    }
    if (decision.action == Action::OpenFile)
        expect((decision.url.path() + u'/').startsWith(folders.project + u'/'));
}

void checkHtml(const QString &html)
{
    const QList<ChatLink> links = MarkdownLinks::in(html);
    expect(links.size() == html.count(QStringLiteral("<a href=")));
    for (const ChatLink &link : links) {
        expect(MarkdownLinks::shownFor(html, link.address).contains(link.shown));
        check(link);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto text = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    check({text.section(u'\n', 0, 0), text.section(u'\n', 1)});
    for (const MarkdownBlock &block : MarkdownReader::parse(text).blocks) {
        checkHtml(block.html);
        for (const QString &cell : block.cells)
            checkHtml(cell);
    }
    return 0;
}
