#include "base/Text.h"

#include <QCollator>
#include <QLocale>

#include <simdjson.h>
#include <unicode/brkiter.h>
#include <unicode/utext.h>

#include <memory>

namespace Vesk::Text
{
namespace
{

// Code units that never join a neighbour of the same sort: Latin, Chinese characters, whole Hangul syllables.
// Nearly all real text is made of them, and their boundaries need no table.
constexpr bool standsAlone(char16_t unit)
{
    return unit < 0x0300 || (unit >= 0x4E00 && unit <= 0x9FFF) || (unit >= 0xAC00 && unit <= 0xD7A3);
}

icu::BreakIterator *sharedIterator()
{
    static thread_local const std::unique_ptr<icu::BreakIterator> iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::BreakIterator> made(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        return U_SUCCESS(status) ? std::move(made) : nullptr;
    }();
    return iterator.get();
}

/** Walks forward over the character boundaries of a text, looking no further than it is asked to. */
class CharacterWalk
{
public:
    explicit CharacterWalk(const QString &text)
        : m_units(reinterpret_cast<const char16_t *>(text.utf16()))
        , m_size(text.size())
    {
    }
    ~CharacterWalk()
    {
        if (m_iterator == nullptr)
            return;
        m_iterator->setText(icu::UnicodeString()); // the shared iterator must not keep a view of our text
        utext_close(&m_view);
    }
    CharacterWalk(const CharacterWalk &) = delete;
    CharacterWalk &operator=(const CharacterWalk &) = delete;

    [[nodiscard]] bool atEnd() const { return m_position >= m_size; }
    [[nodiscard]] qsizetype position() const { return m_position; }

    void advance()
    {
        const char16_t unit = m_units[m_position];
        if (m_position + 1 == m_size) {
            m_position = m_size;
            return;
        }
        const char16_t next = m_units[m_position + 1];
        if (standsAlone(unit) && standsAlone(next) && !(unit == u'\r' && next == u'\n'))
            ++m_position;
        else
            m_position = boundaryBehind(m_position);
    }

private:
    qsizetype boundaryBehind(qsizetype position)
    {
        if (!open())
            return position
                + (QChar::isHighSurrogate(m_units[position]) && QChar::isLowSurrogate(m_units[position + 1])
                       ? 2
                       : 1);
        const auto index = static_cast<int32_t>(position);
        // next() costs nothing to set up; following() may search backwards for a safe place to start.
        const int32_t boundary =
            m_iterator->current() == index ? m_iterator->next() : m_iterator->following(index);
        return boundary == icu::BreakIterator::DONE ? m_size : boundary;
    }

    bool open()
    {
        if (m_iterator != nullptr)
            return true;
        icu::BreakIterator *iterator = sharedIterator();
        if (iterator == nullptr)
            return false;
        UErrorCode status = U_ZERO_ERROR;
        utext_openUChars(&m_view, m_units, m_size, &status);
        if (U_FAILURE(status))
            return false;
        iterator->setText(&m_view, status);
        if (U_FAILURE(status)) {
            utext_close(&m_view);
            return false;
        }
        m_iterator = iterator;
        return true;
    }

    const char16_t *m_units;
    qsizetype m_size;
    qsizetype m_position = 0;
    UText m_view = UTEXT_INITIALIZER;
    icu::BreakIterator *m_iterator = nullptr;
};

// Where the first `count` characters end, at most the size of the text.
qsizetype endOfCharacters(const QString &text, qsizetype count)
{
    if (count <= 0)
        return 0;
    if (text.size() <= count) // a character has at least one unit
        return text.size();
    CharacterWalk walk(text);
    for (qsizetype seen = 0; seen < count && !walk.atEnd(); ++seen)
        walk.advance();
    return walk.position();
}

const QCollator &nameCollator()
{
    static const QCollator collator = [] {
        // The C locale has no rules for names, so it cannot see numbers in them either.
        const QLocale persons;
        QCollator made {persons.language() == QLocale::C ? QLocale(QLocale::English) : persons};
        made.setNumericMode(true);
        return made;
    }();
    return collator;
}

} // namespace

qsizetype characterCount(const QString &text)
{
    qsizetype count = 0;
    for (CharacterWalk walk(text); !walk.atEnd(); walk.advance())
        ++count;
    return count;
}

QString firstCharacters(const QString &text, qsizetype count)
{
    const qsizetype end = endOfCharacters(text, count);
    return end == text.size() ? text : text.left(end);
}

QString clipped(const QString &text, qsizetype count, const QString &mark)
{
    const qsizetype end = endOfCharacters(text, count);
    return end == text.size() ? text : text.left(end) + mark;
}

QString firstLine(const QString &text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i].unicode();
        if ((unit >= 0x0A && unit <= 0x0D) || unit == 0x85 || unit == 0x2028 || unit == 0x2029)
            return text.left(i);
    }
    return text;
}

QStringView trimBlanks(QStringView text)
{
    const auto isBlank = [](QChar c) { return c == u' ' || c == u'\t'; };
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

QString trimBlanks(const QString &text)
{
    const QStringView trimmed = trimBlanks(QStringView(text));
    return trimmed.size() == text.size() ? text : trimmed.toString();
}

QString trimWhitespace(const QString &text)
{
    return text.trimmed();
}

std::optional<QString> fromStrictUtf8(QByteArrayView bytes)
{
    if (!simdjson::validate_utf8(bytes.data(), static_cast<std::size_t>(bytes.size())))
        return std::nullopt;
    QString text = QString::fromUtf8(bytes);
    if (bytes.startsWith("\xEF\xBB\xBF"))
        text.prepend(QChar(QChar::ByteOrderMark)); // which Qt takes off
    return text;
}

int compareNames(const QString &left, const QString &right)
{
    return nameCollator().compare(left, right);
}

QCollatorSortKey nameSortKey(const QString &text)
{
    return nameCollator().sortKey(text);
}

} // namespace Vesk::Text
