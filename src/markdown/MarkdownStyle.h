// The colours and fonts of inline Markdown text.
#pragma once

#include <QString>
#include <QStringList>

namespace Vesk
{

/** What a theme says about inline text. Changing it needs no new parse: only `apply` for what is on the
 * screen. */
struct MarkdownStyle {
    QString linkColor;      ///< as in "#93A8FF"
    QString codeBackground; ///< the ground of inline code
    QStringList codeFontFamilies;
    int codePixelSize = 0; ///< 0: that of the text around it

    /** A block's `html` (or a table cell) with this style, fit for a `Text` with `textFormat: Text.RichText`.
     */
    [[nodiscard]] QString apply(const QString &html) const;
};

} // namespace Vesk
