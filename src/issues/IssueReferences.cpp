// References to other issues in a cell.
#include "base/Text.h"
#include "issues/IssueCells.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Vesk::IssueCells
{
namespace
{

/** Finds a character forwards; each stretch of the text is searched once, however often it is asked. */
class ForwardSearch
{
public:
    ForwardSearch(QStringView text, QChar wanted)
        : m_text(text)
        , m_wanted(wanted)
    {
    }

    /** The first place at or behind `from`, or -1; `from` never goes back. */
    qsizetype find(qsizetype from)
    {
        if (m_found != none && m_found < from)
            m_found = m_text.indexOf(m_wanted, from);
        return m_found;
    }

private:
    static constexpr qsizetype none = -1;
    static constexpr qsizetype notSearched = -2;

    QStringView m_text;
    QChar m_wanted;
    qsizetype m_found = notSearched;
};

QStringView withoutStrayBackticks(QStringView text)
{
    while (text.startsWith(u'`'))
        text = text.sliced(1);
    while (text.endsWith(u'`'))
        text.chop(1);
    return Text::trimBlanks(text);
}

QStringView firstWord(QStringView text)
{
    const auto end = std::find_if(text.begin(), text.end(), [](QChar c) { return c == u' ' || c == u'\t'; });
    return text.left(end - text.begin());
}

// What one piece of a reference cell names, appended to the list.
void appendReference(QStringView piece, QList<IssueDocument::Ref> &refs)
{
    const QStringView trimmed = Text::trimBlanks(piece);
    const QStringView whole = withoutStrayBackticks(normalizedView(trimmed));
    if (whole.isEmpty())
        return;
    if (!isIDToken(whole)) {
        const QStringView word = firstWord(trimmed);
        const QStringView id = withoutStrayBackticks(normalizedView(word));
        if (isIDToken(id)) {
            refs.append({id.toString(), isStruck(word)});
            return;
        }
    }
    // A title where a number belongs is kept: it shows up as a reference to an issue that is not there.
    refs.append({whole.toString(), isStruck(trimmed)});
}

} // namespace

QString unwrappingIDLinks(const QString &text)
{
    if (!text.contains("]("_L1))
        return text;
    const QStringView view(text);
    ForwardSearch opening(view, u'[');
    ForwardSearch closing(view, u']');
    ForwardSearch ending(view, u')');
    QString unwrapped;
    unwrapped.reserve(text.size());
    qsizetype copied = 0;
    qsizetype at = opening.find(0);
    while (at >= 0) {
        const qsizetype close = closing.find(at + 1);
        const bool isLink = close >= 0 && view.sliced(close + 1).startsWith(u'(');
        const qsizetype end = isLink ? ending.find(close + 2) : -1;
        if (end >= 0) {
            const QStringView name = view.sliced(at + 1, close - at - 1);
            if (isIDToken(normalizedView(name))) {
                unwrapped += view.sliced(copied, at - copied);
                unwrapped += name;
                copied = end + 1;
            }
        }
        at = opening.find(end >= 0 ? end + 1 : at + 1);
    }
    unwrapped += view.sliced(copied);
    return unwrapped;
}

QString strippingStrayBackticks(QStringView text)
{
    return withoutStrayBackticks(text).toString();
}

bool isStruck(QStringView text)
{
    constexpr QStringView mark = u"~~";
    text = withoutStrayBackticks(Text::trimBlanks(text));
    return text.startsWith(mark) && text.indexOf(mark, mark.size()) >= 0;
}

QList<IssueDocument::Ref> refDetails(const std::optional<QString> &raw)
{
    QList<IssueDocument::Ref> refs;
    if (!raw || raw->isEmpty())
        return refs;
    const QString text = unwrappingIDLinks(*raw);
    const QStringView view(text);
    qsizetype begin = 0;
    for (qsizetype i = 0; i <= view.size(); ++i) {
        if (i < view.size() && view[i] != u',' && view[i] != u'·' && view[i] != u'/')
            continue;
        appendReference(view.sliced(begin, i - begin), refs);
        begin = i + 1;
    }
    return refs;
}

QString appendingRef(const QString &id, const QString &raw)
{
    const QString cell = Text::trimBlanks(raw);
    const QList<IssueDocument::Ref> refs = refDetails(cell);
    const bool isThere = std::any_of(refs.begin(), refs.end(), [&](const IssueDocument::Ref &ref) {
        return ref.id.compare(id, Qt::CaseInsensitive) == 0;
    });
    if (isThere)
        return raw;
    const QString quoted = u'`' + id + u'`';
    if (normalizedView(cell).isEmpty())
        return quoted;
    return cell + u" · "_s + (cell.contains(u'`') ? quoted : id);
}

} // namespace Vesk::IssueCells
