#include "markdown/CodeTokens.h"

#include "markdown/CodeLanguage_p.h"

#include <algorithm>

namespace Vesk
{
namespace
{

using TokenKind = CodeToken::Kind;

bool isWordSign(QChar c)
{
    return c.isLetterOrNumber() || c == u'_';
}

/** One pass over a text. */
class TokenScan
{
public:
    TokenScan(QStringView code, const CodeLanguage &language)
        : m_code(code)
        , m_language(language)
    {
    }

    [[nodiscard]] QList<CodeToken> run()
    {
        while (m_at < m_code.size()) {
            if (m_language.isDiff)
                diffLine();
            else
                next();
        }
        return m_tokens;
    }

private:
    void next()
    {
        const QStringView rest = m_code.sliced(m_at);
        const QChar c = rest.front();
        if (!m_language.blockBegin.isEmpty() && rest.startsWith(m_language.blockBegin))
            return take(TokenKind::Comment,
                        endBehind(m_language.blockEnd, m_at + m_language.blockBegin.size()));
        const bool startsWord = m_at == 0 || !isWordSign(m_code[m_at - 1]);
        for (const QString &sign : m_language.lineComments) {
            // In a shell "a#b" and "$#" are no comments.
            const bool inText = sign == u"#" && m_at > 0 && !m_code[m_at - 1].isSpace();
            if (rest.startsWith(sign) && !inText)
                return take(TokenKind::Comment, lineEnd());
        }
        if (m_language.quotes.contains(c))
            return take(TokenKind::String, stringEnd(c));
        if (startsWord && c.isDigit())
            return take(TokenKind::Number, wordEnd(true));
        if (startsWord && isWordSign(c)) {
            const qsizetype end = wordEnd(false);
            const QString word = m_code.sliced(m_at, end - m_at).toString();
            if (m_language.words.contains(m_language.ignoresCase ? word.toLower() : word))
                return take(TokenKind::Keyword, end);
            m_at = end;
            return;
        }
        ++m_at;
    }

    void diffLine()
    {
        const qsizetype end = lineEnd();
        const QStringView line = m_code.sliced(m_at, end - m_at);
        if (line.startsWith(u"@@"))
            take(TokenKind::Keyword, end);
        else if (line.startsWith(u'+') || line.startsWith(u'-'))
            take(line.front() == u'+' ? TokenKind::Added : TokenKind::Removed, end);
        m_at = std::min(end + 1, m_code.size());
    }

    void take(TokenKind kind, qsizetype end)
    {
        m_tokens.append({m_at, end - m_at, kind});
        m_at = end;
    }

    [[nodiscard]] qsizetype lineEnd() const { return endAt(m_code.indexOf(u'\n', m_at)); }
    [[nodiscard]] qsizetype endAt(qsizetype found) const { return found < 0 ? m_code.size() : found; }
    [[nodiscard]] qsizetype endBehind(QStringView sign, qsizetype from) const
    {
        const qsizetype found = m_code.indexOf(sign, from);
        return found < 0 ? m_code.size() : found + sign.size();
    }

    [[nodiscard]] qsizetype stringEnd(QChar quote) const
    {
        const QString three(3, quote);
        if (m_code.sliced(m_at).startsWith(three))
            return endBehind(three, m_at + 3);
        for (qsizetype i = m_at + 1; i < m_code.size(); ++i) {
            if (m_code[i] == u'\\' && m_language.escapes)
                ++i;
            else if (m_code[i] == quote)
                return i + 1;
            else if (m_code[i] == u'\n' && quote != u'`')
                return i;
        }
        return m_code.size();
    }

    [[nodiscard]] qsizetype wordEnd(bool number) const
    {
        qsizetype end = m_at + 1;
        while (end < m_code.size() && (isWordSign(m_code[end]) || (number && m_code[end] == u'.')))
            ++end;
        return end;
    }

    QStringView m_code;
    const CodeLanguage &m_language;
    qsizetype m_at = 0;
    QList<CodeToken> m_tokens;
};

} // namespace

QList<CodeToken> CodeTokens::of(QStringView code, const QString &language)
{
    const CodeLanguage *known = codeLanguage(language);
    if (!known || code.size() > maxCharacters)
        return {};
    return TokenScan(code, *known).run();
}

} // namespace Vesk
