// Which addresses in a Markdown text may be links.
#pragma once

#include <QString>
#include <QStringView>

namespace Vesk::MarkdownAddress
{

inline constexpr qsizetype maxLength = 2048; ///< code units; longer addresses are shown, not linked

/** Whether an address may become a link: http, https, file, or a path, also one with line numbers behind it.
 */
[[nodiscard]] bool isLinkable(QStringView address);

/** An address in running text. */
struct Found {
    qsizetype begin = 0; ///< the size of the text when there is none
    qsizetype size = 0;  ///< 0 when there is none
    QString address;
};

/**
 * The first web address in running text: from "http://", "https://" or "www." to the last ASCII character
 * that can belong to it. Letters of other scripts end it, for Korean particles follow without a blank; so
 * does a full stop or an unmatched bracket at its end.
 */
[[nodiscard]] Found firstIn(QStringView text);

} // namespace Vesk::MarkdownAddress
