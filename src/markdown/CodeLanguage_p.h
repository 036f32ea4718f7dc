// What tells the languages apart for colouring.
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

namespace Vesk
{

/** The signs and words of one family of languages. */
struct CodeLanguage {
    QStringList lineComments;
    QString blockBegin, blockEnd; ///< of a comment over several lines
    QString quotes;               ///< each begins and ends a string; '`' and tripled ones go over lines
    bool escapes = true;          ///< a backslash takes the next sign into the string
    bool ignoresCase = false;     ///< of words
    bool isDiff = false;          ///< lines begin with + or -
    QSet<QString> words;
};

/** The language that a fence names; null for one that is not known. */
[[nodiscard]] const CodeLanguage *codeLanguage(const QString &name);

} // namespace Vesk
