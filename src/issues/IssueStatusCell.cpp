// The status cell: a word, decorated or not, and the note beside it.
#include "base/Text.h"
#include "issues/IssueCells.h"
#include "issues/IssueStatus.h"

namespace Vesk
{
namespace
{

// Behind a status and a blank, these begin a note.
constexpr QStringView noteMarks = u"—–-→,:(·";
// The longest word that could be one of the known ones, with room to spare.
constexpr qsizetype longestKnownWord = 32;

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t';
}

bool isKnownStatus(QStringView word)
{
    return word.size() <= longestKnownWord && IssueStatus::parse(word.toString()).isKnown();
}

// Where a known status ends and the blanks before its note begin; -1 when the cell is not made of the two.
qsizetype noteBegin(QStringView cell)
{
    for (qsizetype i = 0; i < cell.size();) {
        if (!isBlank(cell[i])) {
            ++i;
            continue;
        }
        const qsizetype blank = i;
        while (i < cell.size() && isBlank(cell[i]))
            ++i;
        if (i < cell.size() && noteMarks.contains(cell[i])
            && isKnownStatus(IssueCells::normalizedView(cell.left(blank))))
            return blank;
    }
    return -1;
}

} // namespace

IssueDocument::StatusCell IssueCells::statusCell(QStringView raw)
{
    const QStringView cell = Text::trimBlanks(raw);
    qsizetype size = -1;
    if (cell.startsWith(u'`'))
        size = cell.indexOf(u'`', 1) + 1;
    // The whole goes first: "to do" and "진행 중" are words, not a word and a note.
    if (size <= 0 && !isKnownStatus(normalizedView(cell)))
        size = noteBegin(cell);
    if (size <= 0)
        size = cell.size();
    const QStringView token = cell.left(size);
    return {
        .token = token.toString(),
        .word = normalizeValue(token),
        .trailing = cell.sliced(size).toString(),
    };
}

QString IssueDocument::StatusCell::rewritten(const QString &newWord) const
{
    const bool quoted = token.size() >= 2 && token.startsWith(u'`') && token.endsWith(u'`');
    return quoted ? u'`' + newWord + u'`' + trailing : newWord + trailing;
}

std::optional<QString> IssueDocument::statusNote() const
{
    // A parenthesis is part of the note, not a mark before it.
    const auto isSkipped = [](QChar c) { return isBlank(c) || (c != u'(' && noteMarks.contains(c)); };
    const QString trailing = statusCell().trailing;
    QStringView note = Text::trimBlanks(QStringView(trailing));
    while (!note.isEmpty() && isSkipped(note.front()))
        note = note.sliced(1);
    return note.isEmpty() ? std::nullopt : std::optional(note.toString());
}

} // namespace Vesk
