// The difference of one file, cut to what a window can show, with what was left out counted.
#pragma once

#include "git/GitTask.h"
#include "git/GitWordDiff.h"
#include "git/GitWorkingTree.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace Vesk
{

class GuardedGit;

namespace GitCommitChanges
{
struct Target;
}

namespace GitDiff
{

inline constexpr qint64 maxOutputBytes = 262'144;
inline constexpr qsizetype maxLines = 2000;
inline constexpr qsizetype maxLineBytes = 1000;

/** A line as it is shown, without its leading mark. */
struct Line {
    enum class Kind { Meta, Hunk, Context, Added, Removed, NoNewline };

    int id = 0; ///< its place in the list
    Kind kind = Kind::Context;
    QString text {};
    std::optional<qint64> oldNumber {};
    std::optional<qint64> newNumber {};
    qsizetype clippedBytes = 0;            ///< cut off the end of a long line
    QList<GitWordDiff::Range> emphasis {}; ///< what differs from its counterpart; load() alone fills it

    bool operator==(const Line &) const = default;
};

struct Content {
    enum class Kind { Lines, Failed, Binary, Empty, Directory };

    Kind kind = Kind::Empty;
    QList<Line> lines {}; ///< of Lines
    QString failure {};   ///< of Failed: for people

    bool operator==(const Content &) const = default;
};

struct FileDiff {
    Content content {};
    qint64 readBytes = 0;  ///< of git's output, read and parsed
    qint64 totalBytes = 0; ///< that git wrote
    int omittedLines = 0;  ///< beyond the limit of lines
    int added = 0;         ///< lines, with the omitted ones
    int removed = 0;

    bool operator==(const FileDiff &) const = default;
};

/** "@@ -oldStart,oldCount +newStart,newCount @@" */
struct HunkHeader {
    qint64 oldStart = 0;
    qint64 oldCount = 0;
    qint64 newStart = 0;
    qint64 newCount = 0;

    bool operator==(const HunkHeader &) const = default;
};

/** The change of a file in the work tree, staged or not, against HEAD. */
GitTask load(const GitWorkingTree::Change &change, const QString &root, QObject *context,
             std::function<void(const FileDiff &)> done);

/** The change of a file in a commit, against its first parent. */
GitTask load(const GitWorkingTree::Change &change, const QString &root,
             const GitCommitChanges::Target &commit, QObject *context,
             std::function<void(const FileDiff &)> done);

// The same on the thread that calls.
[[nodiscard]] FileDiff read(const GitSetting &setting, const GitWorkingTree::Change &change,
                            const QString &root);
[[nodiscard]] FileDiff read(const GitSetting &setting, const GitWorkingTree::Change &change,
                            const QString &root, const GitCommitChanges::Target &commit);

/** The id of the tree without files, in the hashes of that repository. Blocks. */
[[nodiscard]] std::optional<QString> emptyTree(const GuardedGit &git);

/** What people read when it is not to be had. */
[[nodiscard]] QString emptyTreeMessage();

/** The end of a call of `git diff` as what is shown. */
[[nodiscard]] FileDiff assemble(int code, const QByteArray &output, qint64 totalBytes, const QString &error,
                                const QList<int> &acceptedCodes);

/** Parses the output of `git diff` for one file. Bytes that are no UTF-8 are repaired. */
[[nodiscard]] FileDiff parse(QByteArrayView text, qsizetype lineLimit = maxLines,
                             qsizetype lineByteLimit = maxLineBytes);

/** Absent for a line that is none. */
[[nodiscard]] std::optional<HunkHeader> hunkHeader(QByteArrayView line);

/** Of a clipped output the whole lines; without any line end whole characters. */
[[nodiscard]] QByteArrayView trimmedToLineBoundary(QByteArrayView data, bool isClipped);

} // namespace GitDiff

} // namespace Vesk
