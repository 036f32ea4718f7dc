#include "markdown/MarkdownStyle.h"

namespace Vesk
{
namespace
{

QString codeTag(const MarkdownStyle &style)
{
    QStringList families;
    for (const QString &family : style.codeFontFamilies)
        families.append(QStringLiteral("'%1'").arg(family));
    // Blanks in code count: without this, Text would draw several as one.
    QString css = QStringLiteral("white-space:pre-wrap;");
    if (!families.isEmpty())
        css += QStringLiteral("font-family:%1;").arg(families.join(u','));
    if (style.codePixelSize > 0)
        css += QStringLiteral("font-size:%1px;").arg(style.codePixelSize);
    if (!style.codeBackground.isEmpty())
        css += QStringLiteral("background-color:%1;").arg(style.codeBackground);
    return QStringLiteral("<span style=\"%1\">").arg(css.toHtmlEscaped());
}

QString linkTag(const MarkdownStyle &style)
{
    QString css = QStringLiteral("text-decoration:none;");
    if (!style.linkColor.isEmpty())
        css += QStringLiteral("color:%1;").arg(style.linkColor);
    return QStringLiteral("<a style=\"%1\" href=").arg(css.toHtmlEscaped());
}

} // namespace

// Only our own tags hold a '<', so plain replacement is exact.
QString MarkdownStyle::apply(const QString &html) const
{
    QString styled = html;
    styled.replace(QStringLiteral("<code>"), codeTag(*this));
    styled.replace(QStringLiteral("</code>"), QStringLiteral("</span>"));
    styled.replace(QStringLiteral("<a href="), linkTag(*this));
    return styled;
}

} // namespace Vesk
