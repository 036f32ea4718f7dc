// Cutting text by its size in UTF-8.
#pragma once

#include <QString>

namespace Vesk
{

/** Cuts text to a number of UTF-8 bytes, never inside a code point. */
struct UTF8Clip {
    QString text;               ///< the longest prefix of at most the asked size
    qsizetype droppedBytes = 0; ///< bytes of UTF-8 that did not fit

    /** The longest prefix of `text` of at most `maxBytes` bytes that ends on a code point, and what was
     * dropped. */
    [[nodiscard]] static UTF8Clip prefix(const QString &text, qsizetype maxBytes);
};

} // namespace Vesk
