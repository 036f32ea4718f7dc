#include "ui/chat/MarkdownFormat.h"

#include "markdown/ChatLinkPolicy.h"
#include "markdown/MarkdownStyle.h"

#include <QFontInfo>

namespace Vesk
{

namespace
{

QString withLineHeight(const QString &html, qreal lineHeight, QLatin1StringView whiteSpace)
{
    return QStringLiteral("<p style=\"margin:0;line-height:%1px;white-space:%2\">%3</p>")
        .arg(lineHeight)
        .arg(whiteSpace)
        .arg(html);
}

} // namespace

QString MarkdownFormat::paragraph(const QString &html, const QColor &link, const QColor &codeGround,
                                  const QFont &code, qreal lineHeight)
{
    const MarkdownStyle style {link.name(), codeGround.name(), code.families(), QFontInfo(code).pixelSize()};
    return withLineHeight(style.apply(html), lineHeight, QLatin1StringView("normal"));
}

QString MarkdownFormat::shownAddress(const QString &address)
{
    return ChatLinkPolicy::shownAddress(address);
}

QString MarkdownFormat::codeLines(const QString &text, qreal lineHeight)
{
    auto html = text.toHtmlEscaped();
    html.replace(QLatin1Char('\n'), QLatin1StringView("<br>"));
    return withLineHeight(html, lineHeight, QLatin1StringView("pre-wrap"));
}

} // namespace Vesk
