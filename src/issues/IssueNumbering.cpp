#include "issues/IssueNumbering.h"

#include "markdown/MarkdownLines.h"

#include <QHash>

#include <algorithm>
#include <limits>
#include <utility>

namespace Vesk
{

namespace
{

/** Of several values that are equally common, the first. */
template <typename Value>
std::optional<Value> mostCommon(const QList<Value> &values)
{
    QHash<Value, qsizetype> counts;
    for (const Value &value : values) {
        ++counts[value];
    }
    const auto found =
        std::max_element(values.begin(), values.end(),
                         [&](const Value &left, const Value &right) { return counts[left] < counts[right]; });
    return found == values.end() ? std::nullopt : std::optional(*found);
}

QList<IssueNumbering::Token> tokensOf(const QStringList &ids)
{
    QList<IssueNumbering::Token> tokens;
    for (const QString &id : ids) {
        if (auto token = IssueNumbering::parse(id)) {
            tokens.append(std::move(*token));
        }
    }
    return tokens;
}

QList<QString> prefixesOf(const QList<IssueNumbering::Token> &tokens)
{
    QList<QString> prefixes;
    for (const auto &token : tokens) {
        prefixes.append(token.prefix);
    }
    return prefixes;
}

/** The numbers under a prefix, whatever its case. */
class Numbers
{
public:
    Numbers(const QList<IssueNumbering::Token> &tokens, const QString &prefix)
    {
        for (const auto &token : tokens) {
            if (token.prefix.compare(prefix, Qt::CaseInsensitive) == 0) {
                m_widths.append(token.width);
                m_all.insert(token.number);
                m_max = qMax(m_max.value_or(token.number), token.number);
            }
        }
    }
    [[nodiscard]] const QSet<qint64> &all() const { return m_all; }
    [[nodiscard]] std::optional<qint64> max() const { return m_max; }
    [[nodiscard]] std::optional<int> width() const { return mostCommon(m_widths); }

private:
    QList<int> m_widths;
    QSet<qint64> m_all;
    std::optional<qint64> m_max;
};

bool isAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/** The code point that a unit of a text belongs to. */
char32_t pointAt(QStringView text, qsizetype i)
{
    const QChar c = text[i];
    if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
        return QChar::surrogateToUcs4(c, text[i + 1]);
    }
    if (c.isLowSurrogate() && i > 0 && text[i - 1].isHighSurrogate()) {
        return QChar::surrogateToUcs4(text[i - 1], c);
    }
    return c.unicode();
}

bool standsInRun(char32_t point)
{
    return point == u'-' || point == u'_' || QChar::isLetterOrNumber(point) || QChar::isMark(point);
}

void appendTokensOfLine(QList<IssueNumbering::Token> &tokens, QStringView line)
{
    qsizetype begin = 0;
    for (qsizetype i = 0; i <= line.size(); ++i) {
        if (i < line.size() && standsInRun(pointAt(line, i))) {
            continue;
        }
        if (i > begin) {
            if (auto token = IssueNumbering::parse(line.sliced(begin, i - begin).toString())) {
                tokens.append(std::move(*token));
            }
        }
        begin = i + 1;
    }
}

} // namespace

std::optional<IssueNumbering::Token> IssueNumbering::parse(const QString &text)
{
    const qsizetype dash = text.indexOf(u'-');
    if (dash <= 0) {
        return std::nullopt;
    }
    const QString prefix = text.first(dash);
    const QString digits = text.sliced(dash + 1).section(u'-', 0, 0);
    bool hasLetter = false;
    for (qsizetype i = 0; i < prefix.size() && !hasLetter; ++i) {
        hasLetter = QChar::isLetter(pointAt(prefix, i));
    }
    if (!hasLetter || digits.isEmpty() || !std::ranges::all_of(digits, isAsciiDigit)) {
        return std::nullopt;
    }
    bool fits = false;
    const qint64 number = digits.toLongLong(&fits);
    if (!fits) {
        return std::nullopt;
    }
    return Token {prefix, number, static_cast<int>(digits.size())};
}

QList<IssueNumbering::Token> IssueNumbering::idTokens(const QString &text)
{
    QList<Token> tokens;
    MarkdownLines lines(text);
    while (const auto line = lines.next()) {
        if (!line->fenced) {
            appendTokensOfLine(tokens, line->text);
        }
    }
    return tokens;
}

IssueNumbering::Survey IssueNumbering::survey(const QStringList &fileIDs, const QStringList &boardIDs,
                                              const QStringList &referenceTexts)
{
    const QList<Token> fileTokens = tokensOf(fileIDs);
    const QList<Token> boardTokens = tokensOf(boardIDs);
    QList<Token> referenceTokens;
    for (const QString &text : referenceTexts) {
        referenceTokens += idTokens(text);
    }

    Survey survey;
    for (const auto *tokens : {&fileTokens, &boardTokens, &std::as_const(referenceTokens)}) {
        if (const auto prefix = mostCommon(prefixesOf(*tokens))) {
            survey.prefix = *prefix;
            break;
        }
    }
    const Numbers files(fileTokens, survey.prefix);
    const Numbers board(boardTokens, survey.prefix);
    const Numbers references(referenceTokens, survey.prefix);
    if (const auto width = files.width() ? files.width() : board.width()) {
        survey.digits = *width;
    }
    survey.used = files.all() + board.all();
    survey.mentioned = references.all() - survey.used;
    survey.fileMax = files.max();
    survey.boardMax = board.max();
    survey.referenceMax = references.max();
    const qint64 last = qMax(survey.fileMax.value_or(0), survey.boardMax.value_or(0));
    survey.next = last == std::numeric_limits<qint64>::max() ? last : last + 1;
    return survey;
}

bool IssueNumbering::Survey::isAvailable(qint64 number) const
{
    return number >= 1 && !used.contains(number);
}

bool IssueNumbering::Survey::isMentionedOnly(qint64 number) const
{
    return !used.contains(number) && mentioned.contains(number);
}

std::optional<IssueNumbering::MaxSource> IssueNumbering::Survey::maxSource() const
{
    const auto max = std::max({fileMax, boardMax, referenceMax}); // absent is the least
    if (!max) {
        return std::nullopt;
    }
    const Source source = fileMax == max ? Source::Files
        : boardMax == max                ? Source::Board
                                         : Source::References;
    return MaxSource {source, *max};
}

QString IssueNumbering::format(const QString &prefix, qint64 number, int digits)
{
    const QString padded = QString::number(number).rightJustified(qMax(digits, 1), u'0');
    return prefix.isEmpty() ? padded : prefix + u'-' + padded;
}

} // namespace Vesk
