#include "markdown/MarkdownAddress.h"

#include <QLatin1StringView>

#include <algorithm>

namespace Vesk::MarkdownAddress
{
namespace
{

constexpr bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

constexpr bool isAsciiLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isAddressCharacter(QChar c)
{
    constexpr QLatin1StringView signs("-._~:/?#@!$&()*+,;=%");
    return isAsciiLetter(c) || isDigit(c) || (c.unicode() < 0x80 && signs.contains(c));
}

// What stands before the first ':', if it can be the name of a scheme.
QStringView schemeOf(QStringView address)
{
    const qsizetype colon = address.indexOf(u':');
    if (colon <= 0 || !isAsciiLetter(address.front()))
        return {};
    const QStringView name = address.left(colon);
    const bool isName = std::all_of(name.begin(), name.end(), [](QChar c) {
        return isAsciiLetter(c) || isDigit(c) || c == u'+' || c == u'-' || c == u'.';
    });
    return isName ? name : QStringView();
}

// "main.cpp:12", "main.cpp:12:5", "main.cpp:12-20": looks like a scheme and is none.
bool isFileWithLine(QStringView scheme, QStringView rest)
{
    return scheme.contains(u'.') && !rest.isEmpty() && isDigit(rest.front())
        && std::all_of(rest.begin(), rest.end(),
                       [](QChar c) { return isDigit(c) || c == u':' || c == u'-'; });
}

// Without the signs at the end that belong to the sentence around it.
QStringView withoutSentenceEnd(QStringView address)
{
    constexpr QLatin1StringView sentence("?!.,:;*_~&");
    qsizetype opened = address.count(u'(');
    qsizetype closed = address.count(u')');
    while (!address.isEmpty()) {
        const QChar last = address.back();
        if (last == u')' && closed > opened)
            --closed;
        else if (!sentence.contains(last))
            break;
        address.chop(1);
    }
    return address;
}

qsizetype prefixSize(QStringView text)
{
    for (const QLatin1StringView prefix :
         {QLatin1StringView("https://"), QLatin1StringView("http://"), QLatin1StringView("www.")}) {
        if (text.startsWith(prefix, Qt::CaseInsensitive))
            return prefix.size();
    }
    return 0;
}

} // namespace

bool isLinkable(QStringView address)
{
    if (address.isEmpty() || address.size() > maxLength || address.front() == u'#')
        return false;
    // Readers of addresses drop control characters, so one could hide a scheme from us.
    if (std::any_of(address.begin(), address.end(), [](QChar c) { return c < u' ' || c == QChar(0x7F); }))
        return false;
    if (address.front().isSpace() || address.startsWith(u"//") || address.contains(u'\\'))
        return false;
    const qsizetype colon = address.indexOf(u':');
    if (colon < 0)
        return true;
    const QStringView scheme = schemeOf(address);
    if (scheme.isEmpty()) // a path with a colon in it: the colon stands behind a '/', or begins nothing
        return address.left(colon).contains(u'/');
    if (scheme.compare(u"http", Qt::CaseInsensitive) == 0
        || scheme.compare(u"https", Qt::CaseInsensitive) == 0)
        return address.mid(colon + 1).startsWith(u"//");
    if (scheme.compare(u"file", Qt::CaseInsensitive) == 0)
        return address.size() > colon + 1;
    return isFileWithLine(scheme, address.mid(colon + 1));
}

Found firstIn(QStringView text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c != u'h' && c != u'H' && c != u'w' && c != u'W')
            continue;
        const bool inWord = i > 0 && (isAsciiLetter(text[i - 1]) || isDigit(text[i - 1]));
        const qsizetype prefix = inWord ? 0 : prefixSize(text.mid(i, 8));
        if (prefix == 0)
            continue;
        qsizetype end = i + prefix;
        while (end < text.size() && isAddressCharacter(text[end]))
            ++end;
        const QStringView address = withoutSentenceEnd(text.mid(i, end - i));
        const bool bare = prefix == 4; // "www."
        const bool hasHost = address.size() > prefix
            && (isAsciiLetter(address[prefix]) || isDigit(address[prefix]))
            && (!bare || address.mid(prefix).contains(u'.'));
        if (hasHost && address.size() <= maxLength)
            return {i, address.size(), (bare ? QStringLiteral("http://") : QString()).append(address)};
        i = end - 1;
    }
    return {text.size(), 0, {}};
}

} // namespace Vesk::MarkdownAddress
