#include "markdown/LinkHost_p.h"
#include "markdown/MarkdownAddress.h"

#include <QRegularExpression>

#include <algorithm>

namespace Vesk::LinkHost
{
namespace
{

QString ascii(const QString &host)
{
    if (host.isEmpty())
        return host;
    const QString known = QString::fromLatin1(QUrl::toAce(host, QUrl::IgnoreIDNWhitelist)).toLower();
    const QString name = known.isEmpty() ? host.toLower() : known;
    return name.startsWith(u"www.") ? name.mid(4) : name;
}

bool isPlain(QStringView label)
{
    const bool allAscii = std::all_of(label.begin(), label.end(), [](QChar c) { return c.unicode() < 0x80; });
    return allAscii || std::all_of(label.begin(), label.end(), [](QChar c) {
               return c.script() == QChar::Script_Hangul || c.isDigit() || c == u'-';
           });
}

// "example.com" and "example.com/a" say a host; "main.rs" and "v1.2" do not. The endings are those that
// people know as such: any other word with a full stop in it is far more often a file.
QString bareHost(const QString &text)
{
    static const QRegularExpression host(
        QStringLiteral("^((?:[\\p{L}\\p{N}-]+\\.)+(?:com|net|org|edu|gov|io|ai|dev|app|info|biz|me|kr|jp|cn|"
                       "uk|de|fr|eu|us|ru))(?::\\d+)?(?:[/?#].*)?$"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    return host.match(text).captured(1);
}

} // namespace

QString misleading(const QString &host)
{
    if (!host.contains(u"xn--", Qt::CaseInsensitive))
        return {};
    const QString readable = QUrl::fromAce(host.toLatin1(), QUrl::IgnoreIDNWhitelist);
    const auto labels = QStringView(readable).split(u'.');
    const bool unread = readable.contains(u"xn--", Qt::CaseInsensitive);
    return unread || !std::all_of(labels.begin(), labels.end(), isPlain) ? readable : QString();
}

QString claimedBy(const QString &shown, const QUrl &url)
{
    QString text;
    for (const QChar c : shown)
        if (c.category() != QChar::Other_Format)
            text += c;
    text = text.trimmed();
    QString host = bareHost(text);
    if (host.isEmpty()) {
        const MarkdownAddress::Found found = MarkdownAddress::firstIn(text);
        // Letters that end an address in running text may still belong to the host of this one.
        static const QRegularExpression authority(
            QStringLiteral("^(?:https?://|www\\.)(?:[^/?#\\s]*@)?([^/?#:\\s]+)"),
            QRegularExpression::CaseInsensitiveOption);
        if (found.size > 0 && ascii(QUrl(found.address).host()) == ascii(url.host()))
            return {};
        const QString behind = text.mid(found.size > 0 ? found.begin : 0);
        host = authority.match(behind).captured(1);
        while (host.endsWith(u'.'))
            host.chop(1);
    }
    return ascii(host) == ascii(url.host()) ? QString() : host;
}

} // namespace Vesk::LinkHost
