// The parts of source code that are worth a colour.
#pragma once

#include <QList>
#include <QString>

namespace Vesk
{

/** A coloured part of a text; what lies between the parts is plain. */
struct CodeToken {
    enum class Kind { Keyword, String, Number, Comment, Added, Removed };

    qsizetype begin = 0;
    qsizetype size = 0;
    Kind kind = Kind::Keyword;

    bool operator==(const CodeToken &) const = default;
};

namespace CodeTokens
{

inline constexpr qsizetype maxCharacters = 20'000; ///< code units; longer code has no tokens

/**
 * The tokens of code in a language as a fence names it ("cpp", "py", …), in order, none within another. An
 * unknown language has none. It knows strings, comments, numbers and words, not grammar: one pass over the
 * text, which may be unfinished.
 */
[[nodiscard]] QList<CodeToken> of(QStringView code, const QString &language);

} // namespace CodeTokens

} // namespace Vesk
