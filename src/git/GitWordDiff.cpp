#include "git/GitWordDiff.h"

#include "git/GitDiff.h"

#include <algorithm>
#include <vector>

namespace Vesk::GitWordDiff
{
namespace
{

using Words = std::vector<QStringView>;

constexpr std::size_t maxCells = 40'000; // of the table that finds the words in common

enum class Sort { Word, Blank, Mark };

Sort sortOf(QChar c)
{
    if (c.isLetterOrNumber() || c == u'_' || c.isMark() || c.isSurrogate())
        return Sort::Word;
    return c.isSpace() ? Sort::Blank : Sort::Mark;
}

/** Words, runs of blanks, and every other character for itself. */
Words wordsOf(QStringView text)
{
    Words words;
    for (qsizetype start = 0; start < text.size();) {
        const Sort sort = sortOf(text[start]);
        qsizetype end = start + 1;
        while (sort != Sort::Mark && end < text.size() && sortOf(text[end]) == sort)
            ++end;
        words.push_back(text.sliced(start, end - start));
        start = end;
    }
    return words;
}

/** For each word of both lists whether the other has it too, in the same order: the longest such choice. */
void markCommon(const Words &left, const Words &right, std::vector<bool> &inLeft, std::vector<bool> &inRight)
{
    const std::size_t width = right.size() + 1;
    std::vector<quint16> lengths((left.size() + 1) * width, 0); // of the longest choice from here on
    for (std::size_t i = left.size(); i-- > 0;) {
        for (std::size_t j = right.size(); j-- > 0;) {
            lengths[i * width + j] = left[i] == right[j]
                ? static_cast<quint16>(lengths[(i + 1) * width + j + 1] + 1)
                : std::max(lengths[(i + 1) * width + j], lengths[i * width + j + 1]);
        }
    }
    for (std::size_t i = 0, j = 0; i < left.size() && j < right.size();) {
        if (left[i] == right[j])
            inLeft[i++] = inRight[j++] = true;
        else if (lengths[(i + 1) * width + j] >= lengths[i * width + j + 1])
            ++i;
        else
            ++j;
    }
}

/** The words that are not in common, neighbours as one. A blank between two of them belongs to them. */
QList<Range> rangesOf(QStringView line, const Words &words, const std::vector<bool> &isCommon)
{
    QList<Range> ranges;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool isBridge = isCommon[i] && i > 0 && i + 1 < words.size() && !isCommon[i - 1]
            && !isCommon[i + 1] && sortOf(words[i].front()) == Sort::Blank;
        if (isCommon[i] && !isBridge)
            continue;
        const qsizetype start = words[i].data() - line.data();
        if (!ranges.isEmpty() && ranges.last().start + ranges.last().length == start)
            ranges.last().length += words[i].size();
        else
            ranges.append({start, words[i].size()});
    }
    return ranges;
}

/** Units that carry meaning; those in common alone when `isCommon` is given. */
qsizetype weight(const Words &words, const std::vector<bool> *isCommon = nullptr)
{
    qsizetype units = 0;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if ((!isCommon || (*isCommon)[i]) && sortOf(words[i].front()) != Sort::Blank)
            units += words[i].size();
    }
    return units;
}

Words middle(const Words &words, std::size_t before, std::size_t behind)
{
    return {words.begin() + static_cast<std::ptrdiff_t>(before),
            words.end() - static_cast<std::ptrdiff_t>(behind)};
}

} // namespace

Emphasis compare(QStringView removed, QStringView added)
{
    const Words left = wordsOf(removed);
    const Words right = wordsOf(added);
    const std::size_t most = std::min(left.size(), right.size());
    std::size_t before = 0;
    while (before < most && left[before] == right[before])
        ++before;
    std::size_t behind = 0;
    while (behind < most - before && left[left.size() - 1 - behind] == right[right.size() - 1 - behind])
        ++behind;

    const Words leftMiddle = middle(left, before, behind);
    const Words rightMiddle = middle(right, before, behind);
    std::vector<bool> commonLeft(leftMiddle.size(), false);
    std::vector<bool> commonRight(rightMiddle.size(), false);
    if (leftMiddle.size() * rightMiddle.size() <= maxCells)
        markCommon(leftMiddle, rightMiddle, commonLeft, commonRight);

    const auto whole = [&](std::vector<bool> marks) {
        marks.insert(marks.begin(), before, true);
        marks.insert(marks.end(), behind, true);
        return marks;
    };
    commonLeft = whole(std::move(commonLeft));
    commonRight = whole(std::move(commonRight));
    constexpr int leastShare = 3; // a third of the shorter line
    const qsizetype common = weight(left, &commonLeft);
    if (common == 0 || common * leastShare < std::min(weight(left), weight(right)))
        return {};
    return {rangesOf(removed, left, commonLeft), rangesOf(added, right, commonRight)};
}

void emphasise(QList<GitDiff::Line> &lines)
{
    using Kind = GitDiff::Line::Kind;
    const auto endOfRun = [&](qsizetype at, Kind kind) {
        while (at < lines.size() && (lines[at].kind == kind || lines[at].kind == Kind::NoNewline))
            ++at;
        return at;
    };
    const auto linesOf = [&](qsizetype from, qsizetype to, Kind kind) {
        QList<qsizetype> places;
        for (qsizetype i = from; i < to; ++i) {
            if (lines[i].kind == kind)
                places.append(i);
        }
        return places;
    };
    for (qsizetype at = 0; at < lines.size(); ++at) {
        if (lines[at].kind != Kind::Removed)
            continue;
        const qsizetype middleOfRun = endOfRun(at, Kind::Removed);
        const qsizetype end = endOfRun(middleOfRun, Kind::Added);
        const auto removed = linesOf(at, middleOfRun, Kind::Removed);
        const auto added = linesOf(middleOfRun, end, Kind::Added);
        if (removed.size() == added.size()) {
            for (qsizetype i = 0; i < removed.size(); ++i) {
                const Emphasis both = compare(lines[removed[i]].text, lines[added[i]].text);
                lines[removed[i]].emphasis = both.removed;
                lines[added[i]].emphasis = both.added;
            }
        }
        at = std::max(end - 1, at);
    }
}

} // namespace Vesk::GitWordDiff
