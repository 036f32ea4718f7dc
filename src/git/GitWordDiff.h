// Which words differ between a removed line and the added one that took its place.
#pragma once

#include <QList>
#include <QStringView>

namespace Vesk
{

namespace GitDiff
{
struct Line;
}

namespace GitWordDiff
{

/** A part of a line's text, in UTF-16 units. */
struct Range {
    qsizetype start = 0;
    qsizetype length = 0;

    bool operator==(const Range &) const = default;
};

/** What stands in one line alone: ascending ranges that neither touch nor overlap. */
struct Emphasis {
    QList<Range> removed {};
    QList<Range> added {};

    bool operator==(const Emphasis &) const = default;
};

/** Compares word by word. Lines that have little in common give nothing: marking nearly all of both says no
   more than their colours do. The cost is bounded; what is too long is marked from the first difference to
   the last. */
[[nodiscard]] Emphasis compare(QStringView removed, QStringView added);

/** Compares each removed line of a run with the added line at its place in the run that follows. Runs of
    different length are not compared. */
void emphasise(QList<GitDiff::Line> &lines);

} // namespace GitWordDiff

} // namespace Vesk
