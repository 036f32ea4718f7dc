#include "sessions/MessageText.h"

#include "base/Text.h"

#include <algorithm>

namespace Vesk
{

namespace
{

bool isLineEnd(QChar c)
{
    return (c >= u'\n' && c <= u'\r') || c == u'\u0085' || c == u'\u2028' || c == u'\u2029';
}

QString trimSpaces(const QString &text)
{
    const auto isSpace = [](QChar c) { return c.isSpace() && !isLineEnd(c); };
    const auto first = std::find_if_not(text.cbegin(), text.cend(), isSpace);
    const auto last = std::find_if_not(text.crbegin(), std::make_reverse_iterator(first), isSpace).base();
    return text.sliced(first - text.cbegin(), last - first);
}

} // namespace

QString titleFrom(const QString &text)
{
    constexpr qsizetype maxCharacters = 40;
    const auto begin = std::find_if_not(text.cbegin(), text.cend(), isLineEnd);
    const QString line = trimSpaces(Text::firstLine(text.sliced(begin - text.cbegin())));
    if (line.isEmpty())
        return QStringLiteral("새 세션");
    const QString head = Text::firstCharacters(line, maxCharacters);
    return head.size() == line.size() ? line : trimSpaces(head) + u'…';
}

QString composePrompt(const QString &body, const QStringList &attachments)
{
    if (attachments.isEmpty())
        return body;
    QString block = QStringLiteral("첨부 파일:");
    for (const QString &path : attachments)
        block += QStringLiteral("\n- ") + path;
    return body.isEmpty() ? block : body + QStringLiteral("\n\n") + block;
}

} // namespace Vesk
