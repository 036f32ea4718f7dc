#include "sessions/ComposerAutocomplete.h"

#include <algorithm>
#include <iterator>

namespace Vesk::ComposerAutocomplete
{

namespace
{

bool isBlankOrLineEnd(QChar c)
{
    return c == u'\t' || c == u'\n' || c == u'\r' || c == u' ';
}

} // namespace

std::optional<Detection> detect(const QString &text, qsizetype caret)
{
    if (caret < 1 || caret > text.size())
        return std::nullopt;
    for (qsizetype at = caret - 1; at >= 0; --at) {
        const QChar c = text.at(at);
        if (isBlankOrLineEnd(c))
            return std::nullopt;
        const bool beginsWord = at == 0 || isBlankOrLineEnd(text.at(at - 1));
        if ((c == u'/' || c == u'@') && beginsWord)
            return Detection {c == u'/' ? Trigger::Slash : Trigger::At,
                              text.sliced(at + 1, caret - at - 1),
                              {at, caret - at}};
    }
    return std::nullopt;
}

QStringList filterSlash(const QString &query, const QStringList &commands)
{
    const QString wanted = query.toLower();
    QStringList found;
    std::copy_if(commands.cbegin(), commands.cend(), std::back_inserter(found),
                 [&](const QString &command) { return command.toLower().startsWith(wanted); });
    found.sort();
    return found;
}

} // namespace Vesk::ComposerAutocomplete
