#include "issues/IssueCells.h"

#include "base/Text.h"
#include "issues/TableLine_p.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace Vesk::IssueCells
{
namespace
{

// In the order in which they are looked for: an earlier one that stands later in the text still goes first.
constexpr std::array<QStringView, 4> headingSeparators {u" · ", u" — ", u" – ", u": "};
constexpr std::array<QStringView, 4> milestoneMarks {u" · ", u" — ", u" – ", u" ("};
constexpr std::array<QStringView, 4> placeholders {u"—", u"–", u"―", u"-"};

bool unwrap(QStringView &text, QStringView wrapper)
{
    if (text.size() <= 2 * wrapper.size() || !text.startsWith(wrapper) || !text.endsWith(wrapper))
        return false;
    text = Text::trimBlanks(text.sliced(wrapper.size(), text.size() - 2 * wrapper.size()));
    return true;
}

bool isNumber(char32_t character)
{
    return u_getIntPropertyValue(static_cast<UChar32>(character), UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

} // namespace

QStringView normalizedView(QStringView text)
{
    text = Text::trimBlanks(text);
    for (bool changed = true; changed;) {
        changed = unwrap(text, u"**");
        changed = unwrap(text, u"~~") || changed;
        changed = unwrap(text, u"`") || changed;
    }
    return std::find(placeholders.begin(), placeholders.end(), text) == placeholders.end() ? text
                                                                                           : QStringView();
}

QString normalizeValue(QStringView text)
{
    return normalizedView(text).toString();
}

bool isNumeric(QStringView text)
{
    if (text.isEmpty())
        return false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c >= u'0' && c <= u'9')
            continue;
        char32_t character = c.unicode();
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            character = QChar::surrogateToUcs4(c, text[++i]);
        if (!isNumber(character))
            return false;
    }
    return true;
}

bool isIDToken(QStringView text)
{
    const qsizetype dash = text.lastIndexOf(u'-');
    return dash > 0 && isNumeric(text.sliced(dash + 1)) && !text.left(dash).contains(u' ');
}

QStringList tableCells(QStringView line)
{
    QStringList cells;
    for (const QStringView cell : TableLine::rawCells(line))
        cells.append(Text::trimBlanks(cell).toString());
    return cells;
}

bool isSeparatorRow(QStringView line)
{
    bool separates = false;
    for (const QStringView raw : TableLine::rawCells(line)) {
        const QStringView cell = Text::trimBlanks(raw);
        separates = std::all_of(cell.begin(), cell.end(), [](QChar c) { return c == u'-' || c == u':'; })
            && cell.contains(u'-');
        if (!separates)
            return false;
    }
    return separates;
}

std::pair<QString, QString> splitHeading(QStringView text)
{
    text = Text::trimBlanks(text);
    for (const QStringView separator : headingSeparators) {
        const qsizetype at = text.indexOf(separator);
        if (at < 0)
            continue;
        const QStringView left = Text::trimBlanks(text.left(at));
        const QStringView right = Text::trimBlanks(text.sliced(at + separator.size()));
        if (!left.isEmpty() && !right.isEmpty())
            return {normalizeValue(left), right.toString()};
    }
    const qsizetype space = text.indexOf(u' ');
    const QStringView word = space < 0 ? text : text.left(space);
    if (!isIDToken(word))
        return {QString(), text.toString()};
    const QStringView rest = Text::trimBlanks(text.sliced(word.size()));
    return {word.toString(), (rest.isEmpty() ? word : rest).toString()};
}

std::optional<QString> leadingID(QStringView stem)
{
    const qsizetype first = stem.indexOf(u'-');
    if (first <= 0)
        return std::nullopt;
    const qsizetype second = stem.indexOf(u'-', first + 1);
    const QStringView id = second < 0 ? stem : stem.left(second);
    return isNumeric(id.sliced(first + 1)) ? std::optional(id.toString()) : std::nullopt;
}

QString cutMilestone(QStringView text)
{
    text = Text::trimBlanks(text);
    for (const QStringView mark : milestoneMarks) {
        const qsizetype at = text.indexOf(mark);
        if (at >= 0)
            return Text::trimBlanks(text.left(at)).toString();
    }
    return text.toString();
}

} // namespace Vesk::IssueCells
