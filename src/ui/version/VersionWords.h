// What the version window says: states, times, counts.
#pragma once

#include "git/GitDiff.h"

#include <QDateTime>
#include <QString>

namespace Vesk::VersionWords
{

/** The moment of a commit as a table shows it: without the year in the year of `now`. `timestamp` in seconds
    since 1970. */
[[nodiscard]] QString commitDate(qint64 timestamp, const QDateTime &now);

/** The sentence in place of a diff; empty when there are lines. */
[[nodiscard]] QString diffSentence(const GitDiff::Content &content);

/** What was left out below the last line of a diff; empty when nothing was. */
[[nodiscard]] QString omission(const GitDiff::FileDiff &diff);

/** What stands below the last line: what was left out, or that the file is empty; mostly nothing. */
[[nodiscard]] QString remark(const GitDiff::FileDiff &diff);

/** What was cut off a line, as in "+4,000바이트"; empty when nothing was. */
[[nodiscard]] QString clipped(qsizetype bytes);

} // namespace Vesk::VersionWords
