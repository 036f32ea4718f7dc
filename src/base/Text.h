// Counting, cutting and trimming of text by the rules of this product: a "character" is a user-perceived one.
#pragma once

#include <QCollator>
#include <QString>
#include <QStringView>

#include <optional>

namespace Vesk::Text
{

/** The number of user-perceived characters (extended grapheme clusters). */
[[nodiscard]] qsizetype characterCount(const QString &text);

/** The first `count` user-perceived characters; the whole text when it has no more. */
[[nodiscard]] QString firstCharacters(const QString &text, qsizetype count);

/** `text` when it has at most `count` characters, else its first `count` with `mark` behind them. */
[[nodiscard]] QString clipped(const QString &text, qsizetype count,
                              const QString &mark = QStringLiteral("…"));

/** The text before its first line end of any kind (LF, CR, CRLF, VT, FF, NEL, LS, PS). */
[[nodiscard]] QString firstLine(const QString &text);

/** Takes spaces and tabs off both ends; line ends stay. */
[[nodiscard]] QString trimBlanks(const QString &text);
[[nodiscard]] QStringView trimBlanks(QStringView text);

/** Takes white space and line ends (the Unicode class) off both ends. */
[[nodiscard]] QString trimWhitespace(const QString &text);

/** The text that the bytes encode, a byte order mark included; nothing when they are not UTF-8 throughout. */
[[nodiscard]] std::optional<QString> fromStrictUtf8(QByteArrayView bytes);

/** The order in which the person's language lists names, digits by their value: "A-9" before "A-10".
    Negative, zero or positive. */
[[nodiscard]] int compareNames(const QString &left, const QString &right);
/** For sorting many: keys stand in the order of compareNames(). */
[[nodiscard]] QCollatorSortKey nameSortKey(const QString &text);

} // namespace Vesk::Text
