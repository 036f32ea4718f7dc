#include "markdown/MarkdownLinks.h"

namespace Vesk::MarkdownLinks
{
namespace
{

constexpr QStringView linkTag = u"<a href=\"";
constexpr QStringView linkEnd = u"</a>";

} // namespace

QList<ChatLink> in(const QString &html)
{
    QList<ChatLink> links;
    const QStringView text(html);
    for (qsizetype at = text.indexOf(linkTag); at >= 0; at = text.indexOf(linkTag, at)) {
        at += linkTag.size();
        const qsizetype quote = text.indexOf(u'"', at);
        const qsizetype end = text.indexOf(linkEnd, at);
        if (quote < 0 || end < quote + 2)
            break;
        links.append(
            {plainText(text.sliced(at, quote - at)), plainText(text.sliced(quote + 2, end - quote - 2))});
        at = end;
    }
    return links;
}

QStringList shownFor(const QString &html, const QString &address)
{
    QStringList shown;
    for (const ChatLink &link : in(html)) {
        if (link.address == address && !shown.contains(link.shown))
            shown << link.shown;
    }
    return shown;
}

QString plainText(QStringView html)
{
    struct Reference {
        QStringView name;
        QChar sign;
    };
    constexpr Reference references[] = {
        {u"&lt;", u'<'}, {u"&gt;", u'>'}, {u"&amp;", u'&'}, {u"&quot;", u'"'}, {u"&#39;", u'\''}};
    QString text;
    text.reserve(html.size());
    for (qsizetype at = 0; at < html.size();) {
        const QStringView rest = html.sliced(at);
        if (rest.front() == u'<') {
            const qsizetype end = rest.indexOf(u'>');
            if (rest.startsWith(u"<br"))
                text += u'\n';
            at += end < 0 ? rest.size() : end + 1;
            continue;
        }
        qsizetype size = 0;
        for (const Reference &reference : references) {
            if (rest.startsWith(reference.name)) {
                text += reference.sign;
                size = reference.name.size();
            }
        }
        if (size == 0) {
            text += rest.front();
            size = 1;
        }
        at += size;
    }
    return text;
}

} // namespace Vesk::MarkdownLinks
