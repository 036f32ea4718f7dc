// One look at a repository: branch, changes, and its history with the lanes of its graph.
#pragma once

#include "base/Result.h"
#include "git/GitTask.h"
#include "git/GitWorkingTree.h"

#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace Vesk::GitStatusReader
{

struct GitCommit {
    QString hash {};
    QStringList parents {}; ///< their hashes
    QString subject {};
    QStringList refs {};  ///< branches and tags that point here, not told apart
    qint64 timestamp = 0; ///< seconds since 1970
    QString author {};
    QString authorEmail {};

    bool operator==(const GitCommit &) const = default;
};

/** A line of the graph. */
struct GraphRow {
    GitCommit commit {};
    int lane = 0;
    QList<int> parentLanes {}; ///< where the line to each parent goes on below, in the order of the parents
    int laneCount = 1;         ///< lanes that the row has to have room for

    bool operator==(const GraphRow &) const = default;
};

/** Both histories, of at most a window's commits. */
struct History {
    QList<GraphRow> rows {};      ///< of HEAD
    bool truncated = false;       ///< there are more commits
    QList<GraphRow> graphRows {}; ///< of every branch and tag
    bool graphTruncated = false;
};

/** A snapshot; equal ones look equal. */
struct RepoStatus {
    QString root {};   ///< top of the work tree; text by GitPath::decode()
    QString branch {}; ///< empty when HEAD is detached, or has no commit yet
    QList<GitWorkingTree::Change> changes {};
    bool changesTruncated = false; ///< there are more changes than are read
    QString changesFailure {};     ///< git's words when the changes could not be read; then there are none
    QString historyFailure {};     ///< the same of one history or both
    int ahead = 0;                 ///< commits that the upstream does not have
    int behind = 0;                ///< commits of the upstream that are not here
    bool hasRemote = false;        ///< the branch has an upstream
    bool hasAnyRemote = false;
    QStringList remotes {};  ///< their names
    QList<GraphRow> rows {}; ///< history of HEAD
    bool truncated = false;
    QList<GraphRow> graphRows {}; ///< history of all refs
    bool graphTruncated = false;
    int window = 0;          ///< most commits of each history
    QStringList branches {}; ///< the other local branches

    bool operator==(const RepoStatus &) const = default;
};

struct AheadBehind {
    int ahead = 0;
    int behind = 0;

    bool operator==(const AheadBehind &) const = default;
};

/** Reads the repository that the folder lies in. Unavailable without git; NotFound, with git's words, when
   there is no repository; Unreadable when it has no work tree, or is not to be read. */
GitTask load(const QString &cwd, int window, QObject *context,
             std::function<void(const Result<RepoStatus> &)> done);

/** The same on the thread that calls. */
[[nodiscard]] Result<RepoStatus> read(const GitSetting &setting, const QString &cwd, int window);

/** Both logs hold one commit more than the window if there is one. */
[[nodiscard]] History history(QByteArrayView headLog, QByteArrayView allLog, int window);

/** The commits of a log in the format that load() asks for. A record that is none is left out. */
[[nodiscard]] QList<GitCommit> parseLog(QByteArrayView text);

/** The names of a "%D" decoration. */
[[nodiscard]] QStringList parseRefs(const QString &text);

/** One name a line, without `current`. */
[[nodiscard]] QStringList parseBranches(const QString &text, const QString &current);

/** "<behind> <ahead>", as `rev-list --left-right --count @{upstream}...HEAD` says it. */
[[nodiscard]] AheadBehind parseAheadBehind(const QString &text);

/** The lanes of commits in the order of a log, newest first. */
[[nodiscard]] QList<GraphRow> layout(const QList<GitCommit> &commits);

/** HEAD's commit stands nowhere in the graph: it is detached and no ref leads to it. */
[[nodiscard]] bool headOutsideGraph(const QList<GraphRow> &rows, const QList<GraphRow> &graphRows);

} // namespace Vesk::GitStatusReader
