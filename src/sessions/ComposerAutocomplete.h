// What is being completed at the caret of a composer.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace Vesk::ComposerAutocomplete
{

enum class Trigger { Slash, At };

/** A range of a text in UTF-16 units. */
struct TokenRange {
    qsizetype start = 0;
    qsizetype length = 0;
    bool operator==(const TokenRange &) const = default;
};

/** A "/" or "@" and what was typed behind it. */
struct Detection {
    Trigger trigger = Trigger::Slash;
    QString query;    ///< between the trigger and the caret
    TokenRange range; ///< the trigger and the query
    bool operator==(const Detection &) const = default;
};

/** The trigger that begins the word at the caret, which is a position in UTF-16 units. One in the middle of a
    word is part of that word: "@src/ma" completes a file, "a/he" nothing. */
[[nodiscard]] std::optional<Detection> detect(const QString &text, qsizetype caret);

/** The commands that begin with the query in any case, in plain string order; all of them for an empty one.
 */
[[nodiscard]] QStringList filterSlash(const QString &query, const QStringList &commands);

} // namespace Vesk::ComposerAutocomplete
