// The links in a block's inline HTML.
#pragma once

#include "markdown/ChatLinkPolicy.h"

#include <QList>

namespace Vesk::MarkdownLinks
{

/** The links of a MarkdownBlock's `html` (or of a table cell), in order, freed of all markup. */
[[nodiscard]] QList<ChatLink> in(const QString &html);

/** What is shown under the links to this address: more than one text when the address stands there more than
    once. */
[[nodiscard]] QStringList shownFor(const QString &html, const QString &address);

/** The text of inline HTML, with a line end for each `br`. */
[[nodiscard]] QString plainText(QStringView html);

} // namespace Vesk::MarkdownLinks
