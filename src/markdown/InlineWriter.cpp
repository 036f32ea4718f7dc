#include "markdown/InlineWriter_p.h"
#include "markdown/MarkdownAddress.h"
#include "markdown/MarkdownReader.h"

#include <utility>

namespace Vesk
{
namespace
{

void writeEscaped(QString &html, QStringView text)
{
    for (const QChar c : text) {
        switch (c.unicode()) {
        case u'<':
            html += u"&lt;";
            break;
        case u'>':
            html += u"&gt;";
            break;
        case u'&':
            html += u"&amp;";
            break;
        case u'"':
            html += u"&quot;";
            break;
        case u'\'':
            html += u"&#39;";
            break;
        default:
            html += c;
        }
    }
}

QString escaped(QStringView text)
{
    QString html;
    html.reserve(text.size());
    writeEscaped(html, text);
    return html;
}

} // namespace

void InlineWriter::text(QStringView text)
{
    if (m_links > 0 || m_images > 0)
        writeEscaped(m_html, text);
    else
        writeAutolinked(text);
}

void InlineWriter::code(QStringView text)
{
    writeEscaped(m_html, text);
}

void InlineWriter::lineBreak()
{
    m_html += m_images > 0 ? QStringView(u" ") : QStringView(u"<br>");
}

void InlineWriter::openTag(QLatin1StringView name)
{
    open({.role = Role::Tag, .tag = name, .address = {}});
}

void InlineWriter::openLink(const QString &address)
{
    const bool linked = MarkdownAddress::isLinkable(address) && m_links == 0;
    open({.role = linked ? Role::Link : Role::DroppedLink, .tag = {}, .address = address, .linked = linked});
}

void InlineWriter::openImage(const QString &address)
{
    const bool linked = MarkdownAddress::isLinkable(address) && m_links == 0;
    open({.role = Role::Image, .tag = {}, .address = address, .linked = linked});
}

void InlineWriter::open(Span span)
{
    if (m_images > 0 || std::cmp_greater_equal(m_spans.size(), MarkdownReader::maxDepth)) {
        m_spans.emplace_back();
        return;
    }
    if (span.role == Role::Tag)
        m_html.append(u'<').append(span.tag).append(u'>');
    if (span.linked) {
        writeAddressTag(span.address);
        ++m_links;
    }
    if (span.role == Role::Image) {
        m_html += u"[그림: ";
        ++m_images;
    }
    span.begin = m_html.size();
    m_spans.push_back(std::move(span));
}

void InlineWriter::close()
{
    if (m_spans.empty())
        return;
    const Span span = std::move(m_spans.back());
    m_spans.pop_back();
    switch (span.role) {
    case Role::Silent:
        return;
    case Role::Tag:
        m_html.append(u"</").append(span.tag).append(u'>');
        return;
    case Role::Link:
    case Role::DroppedLink:
        closeLink(span);
        return;
    case Role::Image:
        closeImage(span);
        return;
    }
}

void InlineWriter::closeLink(const Span &span)
{
    const QString address = escaped(span.address);
    const QStringView shown = QStringView(m_html).mid(span.begin);
    if (span.linked) {
        if (shown.isEmpty())
            m_html += address;
        m_html += u"</a>";
        --m_links;
        return;
    }
    constexpr QStringView mail = u"mailto:";
    const bool saysItself =
        address == shown || (address.startsWith(mail) && QStringView(address).mid(mail.size()) == shown);
    if (!address.isEmpty() && !saysItself)
        m_html.append(u" (").append(address).append(u')');
}

void InlineWriter::closeImage(const Span &span)
{
    --m_images;
    if (m_html.size() == span.begin)
        m_html.chop(2); // no text: "[그림]"
    m_html += u']';
    if (span.linked) {
        m_html += u"</a>";
        --m_links;
    } else if (m_links == 0 && !span.address.isEmpty()) {
        m_html.append(u" (").append(escaped(span.address)).append(u')');
    }
}

void InlineWriter::writeAutolinked(QStringView text)
{
    while (!text.isEmpty()) {
        const MarkdownAddress::Found found = MarkdownAddress::firstIn(text);
        writeEscaped(m_html, text.left(found.begin));
        if (found.size == 0)
            return;
        const QStringView shown = text.mid(found.begin, found.size);
        writeAddressTag(found.address);
        writeEscaped(m_html, shown);
        m_html += u"</a>";
        text = text.mid(found.begin + found.size);
    }
}

void InlineWriter::writeAddressTag(QStringView address)
{
    m_html += u"<a href=\"";
    writeEscaped(m_html, address);
    m_html += u"\">";
}

void InlineWriter::clear()
{
    m_html.clear();
    m_spans.clear();
    m_links = 0;
    m_images = 0;
}

QString InlineWriter::cut()
{
    if (m_links > 0 || m_images > 0)
        return {};
    QString begin;
    for (const Span &span : m_spans) {
        if (span.role == Role::Tag)
            begin.append(u'<').append(span.tag).append(u'>');
    }
    for (auto span = m_spans.rbegin(); span != m_spans.rend(); ++span) {
        if (span->role == Role::Tag)
            m_html.append(u"</").append(span->tag).append(u'>');
        span->begin = begin.size();
    }
    return std::exchange(m_html, begin);
}

QString InlineWriter::take()
{
    while (!m_spans.empty())
        close();
    return std::exchange(m_html, QString());
}

} // namespace Vesk
