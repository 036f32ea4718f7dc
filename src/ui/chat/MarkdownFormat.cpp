#include "ui/chat/MarkdownFormat.h"

#include "markdown/ChatLinkPolicy.h"
#include "markdown/CodeTokens.h"
#include "markdown/MarkdownLinks.h"
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

QString MarkdownFormat::note(const QString &text, const QColor &color, const QFont &font)
{
    return QStringLiteral("\u00A0 <span style=\"color:%1;font-size:%2px;font-weight:%3\">%4</span>")
        .arg(color.name())
        .arg(QFontInfo(font).pixelSize())
        .arg(font.weight())
        .arg(text.toHtmlEscaped());
}

QString MarkdownFormat::plainText(const QString &html)
{
    return MarkdownLinks::plainText(html);
}

QString MarkdownFormat::shownAddress(const QString &address)
{
    return ChatLinkPolicy::shownAddress(address);
}

QString MarkdownFormat::colouredCode(const QString &text, const QString &language, const QList<QColor> &inks,
                                     qreal lineHeight)
{
    QString html;
    qsizetype done = 0;
    const QStringView code(text);
    for (const auto &token : CodeTokens::of(text, language)) {
        html += code.sliced(done, token.begin - done).toString().toHtmlEscaped();
        html +=
            QStringLiteral("<span style=\"color:%1\">").arg(inks.value(static_cast<int>(token.kind)).name());
        html += code.sliced(token.begin, token.size).toString().toHtmlEscaped();
        html += QStringLiteral("</span>");
        done = token.begin + token.size;
    }
    html += code.sliced(done).toString().toHtmlEscaped();
    html.replace(QLatin1Char('\n'), QLatin1StringView("<br>"));
    return withLineHeight(html, lineHeight, QLatin1StringView("pre-wrap"));
}

QString MarkdownFormat::codeLines(const QString &text, qreal lineHeight)
{
    auto html = text.toHtmlEscaped();
    html.replace(QLatin1Char('\n'), QLatin1StringView("<br>"));
    return withLineHeight(html, lineHeight, QLatin1StringView("pre-wrap"));
}

} // namespace Vesk
