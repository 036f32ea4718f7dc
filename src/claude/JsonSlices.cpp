#include "claude/JsonSlices.h"

#include "claude/JsonRepair_p.h"

#include <algorithm>
#include <utility>

namespace Vesk::JsonSlices
{

namespace
{

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Goes over the tokens of valid JSON text. Counts brackets instead of recursing, so that depth costs nothing.
class Cursor
{
public:
    explicit Cursor(std::string_view json)
        : m_json(json)
    {
    }

    // The next character that is no white space; 0 at the end.
    char peek()
    {
        while (m_at < m_json.size() && isSpace(m_json[m_at]))
            ++m_at;
        return m_at < m_json.size() ? m_json[m_at] : '\0';
    }

    bool take(char c)
    {
        if (peek() != c)
            return false;
        ++m_at;
        return true;
    }

    std::string_view takeValue()
    {
        const char first = peek();
        const std::size_t begin = m_at;
        if (first == '"')
            skipString();
        else if (first == '{' || first == '[')
            skipBrackets();
        else
            skipScalar();
        return m_json.substr(begin, m_at - begin);
    }

private:
    void skipString()
    {
        for (++m_at; m_at < m_json.size() && m_json[m_at] != '"'; ++m_at) {
            if (m_json[m_at] == '\\')
                ++m_at;
        }
        m_at = std::min(m_at + 1, m_json.size());
    }

    void skipBrackets()
    {
        std::size_t depth = 0;
        do {
            const char c = m_json[m_at];
            if (c == '"') {
                skipString();
                continue;
            }
            if (c == '{' || c == '[')
                ++depth;
            else if (c == '}' || c == ']')
                --depth;
            ++m_at;
        } while (depth > 0 && m_at < m_json.size());
    }

    void skipScalar()
    {
        while (m_at < m_json.size() && !isSpace(m_json[m_at]) && m_json[m_at] != ',' && m_json[m_at] != '}'
               && m_json[m_at] != ']')
            ++m_at;
    }

    std::string_view m_json;
    std::size_t m_at = 0;
};

std::string_view trimmed(std::string_view json)
{
    while (!json.empty() && isSpace(json.front()))
        json.remove_prefix(1);
    while (!json.empty() && isSpace(json.back()))
        json.remove_suffix(1);
    return json;
}

QByteArrayView view(std::string_view slice)
{
    return {slice.data(), static_cast<qsizetype>(slice.size())};
}

char16_t simpleEscape(char16_t c)
{
    switch (c) {
    case 'b':
        return u'\b';
    case 'f':
        return u'\f';
    case 'n':
        return u'\n';
    case 'r':
        return u'\r';
    case 't':
        return u'\t';
    default:
        return c; // quote, backslash, slash
    }
}

QString withoutHalfPairs(QString text)
{
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate())
            ++at;
        else if (text[at].isSurrogate())
            text[at] = QChar(QChar::ReplacementCharacter);
    }
    return text;
}

} // namespace

bool isValid(std::string_view text)
{
    simdjson::dom::parser parser;
    auto error = parser.parse(text.data(), text.size()).error();
    if (mayBeBeyondLimits(error))
        error = parser.parse(withinLimits(text)).error();
    return error == simdjson::SUCCESS;
}

bool isValidObject(std::string_view text)
{
    return isValid(text) && kind(text) == Kind::Object;
}

bool isValidArray(std::string_view text)
{
    return isValid(text) && kind(text) == Kind::Array;
}

Kind kind(std::string_view value)
{
    switch (Cursor(value).peek()) {
    case '{':
        return Kind::Object;
    case '[':
        return Kind::Array;
    case '"':
        return Kind::String;
    case 't':
    case 'f':
        return Kind::Bool;
    case 'n':
        return Kind::Null;
    default:
        return Kind::Number;
    }
}

std::vector<Member> members(std::string_view object)
{
    std::vector<Member> found;
    Cursor cursor(object);
    if (!cursor.take('{'))
        return found;
    while (cursor.peek() == '"') {
        QString key = text(cursor.takeValue());
        cursor.take(':');
        found.push_back({std::move(key), cursor.takeValue()});
        cursor.take(',');
    }
    return found;
}

std::vector<std::string_view> elements(std::string_view array)
{
    std::vector<std::string_view> found;
    Cursor cursor(array);
    if (!cursor.take('['))
        return found;
    while (cursor.peek() != ']' && cursor.peek() != '\0') {
        const std::string_view element = cursor.takeValue();
        if (element.empty())
            break;
        found.push_back(element);
        cursor.take(',');
    }
    return found;
}

std::optional<std::string_view> value(std::string_view object, QStringView key)
{
    std::optional<std::string_view> last;
    for (const Member &member : members(object)) {
        if (member.key == key)
            last = member.value;
    }
    return last;
}

QString text(std::string_view string)
{
    const std::string_view inner = trimmed(string);
    if (inner.size() < 2)
        return {};
    const QString raw = QString::fromUtf8(view(inner.substr(1, inner.size() - 2)));
    if (!raw.contains(u'\\'))
        return raw;

    QString resolved;
    resolved.reserve(raw.size());
    for (qsizetype at = 0; at < raw.size(); ++at) {
        if (raw[at] != u'\\' || at + 1 >= raw.size()) {
            resolved += raw[at];
        } else if (raw[++at] == u'u') {
            resolved += QChar(QStringView(raw).mid(at + 1, 4).toUShort(nullptr, 16));
            at += 4;
        } else {
            resolved += QChar(simpleEscape(raw[at].unicode()));
        }
    }
    return withoutHalfPairs(resolved);
}

std::optional<QString> stringAt(std::string_view object, QStringView key)
{
    const auto found = value(object, key);
    return found && kind(*found) == Kind::String ? std::optional(text(*found)) : std::nullopt;
}

QByteArray compact(std::string_view value)
{
    QByteArray out;
    out.reserve(static_cast<qsizetype>(value.size()));
    bool inString = false;
    for (std::size_t at = 0; at < value.size(); ++at) {
        const char c = value[at];
        if (!inString && isSpace(c))
            continue;
        out += c;
        if (inString && c == '\\' && at + 1 < value.size())
            out += value[++at];
        else if (c == '"')
            inString = !inString;
    }
    return out;
}

QByteArray quoted(const QString &text)
{
    QString out;
    out.reserve(text.size() + 2);
    out += u'"';
    for (const QChar c : withoutHalfPairs(text)) {
        if (c == u'"' || c == u'\\')
            out += u'\\';
        if (c == u'\n')
            out += QLatin1StringView("\\n");
        else if (c < u' ' || c == u'\u007f' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            out += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
        else
            out += c;
    }
    out += u'"';
    return out.toUtf8();
}

QByteArray withMember(std::string_view object, QStringView key, QByteArrayView newValue)
{
    const std::string_view whole = trimmed(object);
    const std::vector<Member> all = members(whole);
    QByteArray out;
    out.reserve(static_cast<qsizetype>(whole.size()) + newValue.size() + key.size() + 8);
    std::size_t copied = 0;
    bool replaced = false;
    for (const Member &member : all) {
        if (member.key != key)
            continue;
        const auto begin = static_cast<std::size_t>(member.value.data() - whole.data());
        out += view(whole.substr(copied, begin - copied));
        out += newValue;
        copied = begin + member.value.size();
        replaced = true;
    }
    if (!replaced) {
        const std::size_t end = all.empty()
            ? whole.find('{') + 1
            : static_cast<std::size_t>(all.back().value.data() - whole.data()) + all.back().value.size();
        out += view(whole.substr(0, end));
        out += all.empty() ? "" : ",";
        out += quoted(key.toString()) + ':';
        out += newValue;
        copied = end;
    }
    out += view(whole.substr(copied));
    return out;
}

} // namespace Vesk::JsonSlices
