#include "git/GitStatusReader.h"

#include "base/Text.h"
#include "git/GitPath.h"
#include "git/GuardedGit.h"
#include "git/RepositoryFault.h"

#include <algorithm>

namespace Vesk::GitStatusReader
{
namespace
{

// Far beyond what a window shows; a hostile history must not fill the memory.
constexpr qint64 maxReadBytes = qint64 {64} * 1024 * 1024;

QStringList logArguments(const QStringList &which, int window)
{
    return QStringList {QStringLiteral("log")} + which
        + QStringList {QStringLiteral("--parents"), QStringLiteral("-n"), QString::number(window + 1),
                       QStringLiteral("--pretty=format:%H%x1f%P%x1f%D%x1f%ct%x00%an%x00%ae%x00%s%x1e")};
}

struct Log {
    QByteArray text {};
    bool isCut = false;
    QString failure {}; ///< then there is no text
};

Log log(const GuardedGit &git, const QStringList &which, int window)
{
    auto output = git.runCapped(logArguments(which, window), maxReadBytes);
    if (output.code != 0)
        return {.failure = GitProcess::failureText(output.err, QStringLiteral("log"), output.code)};
    const bool isCut = output.totalOutputBytes > output.out.size();
    return {.text = std::move(output.out), .isCut = isCut};
}

void readChanges(const GuardedGit &git, RepoStatus &status)
{
    auto output = git.runCapped(
        {QStringLiteral("status"), QStringLiteral("--porcelain=v1"), QStringLiteral("-z")}, maxReadBytes);
    status.changesTruncated = output.totalOutputBytes > output.out.size();
    if (status.changesTruncated)
        output.out.truncate(output.out.lastIndexOf('\0') + 1);
    if (output.code == 0)
        status.changes = GitWorkingTree::parseStatus(output.out);
    else
        status.changesFailure = GitProcess::failureText(output.err, QStringLiteral("status"), output.code);
}

/** Without a commit there is no log of HEAD, and nothing is wrong. */
void readHistory(const GuardedGit &git, RepoStatus &status, bool hasCommit)
{
    const Log headLog = log(git, {}, status.window);
    const Log allLog = log(git,
                           {QStringLiteral("--exclude=refs/stash"), QStringLiteral("--exclude=refs/notes/*"),
                            QStringLiteral("--all"), QStringLiteral("--date-order")},
                           status.window);
    status.historyFailure = !allLog.failure.isEmpty() ? allLog.failure
        : hasCommit                                   ? headLog.failure
                                                      : QString();
    History both = history(headLog.text, allLog.text, status.window);
    status.rows = std::move(both.rows);
    status.truncated = both.truncated || headLog.isCut;
    status.graphRows = std::move(both.graphRows);
    status.graphTruncated = both.graphTruncated || allLog.isCut;
}

void readBranches(const GuardedGit &git, RepoStatus &status)
{
    const auto output = git.run({QStringLiteral("branch"), QStringLiteral("--format=%(refname:short)")});
    status.branches = parseBranches(output.out, status.branch);
    // A detached HEAD stands in the list as a phrase; no name of a branch holds a blank.
    status.branches.removeIf([](const QString &name) { return name.contains(u' '); });
}

void readRemotes(const GuardedGit &git, RepoStatus &status)
{
    status.remotes =
        Text::trimWhitespace(git.run({QStringLiteral("remote")}).out).split(u'\n', Qt::SkipEmptyParts);
    status.hasAnyRemote = !status.remotes.isEmpty();
    const auto upstream = git.run({QStringLiteral("rev-parse"), QStringLiteral("--abbrev-ref"),
                                   QStringLiteral("--symbolic-full-name"), QStringLiteral("@{upstream}")});
    status.hasRemote = upstream.code == 0 && !Text::trimWhitespace(upstream.out).isEmpty();
    if (!status.hasRemote)
        return;
    const auto counts = git.run({QStringLiteral("rev-list"), QStringLiteral("--left-right"),
                                 QStringLiteral("--count"), QStringLiteral("@{upstream}...HEAD")});
    const AheadBehind both = parseAheadBehind(counts.out);
    status.ahead = both.ahead;
    status.behind = both.behind;
}

} // namespace

Result<RepoStatus> read(const GitSetting &setting, const QString &cwd, int window)
{
    if (setting.git.isEmpty())
        return failure(ErrorKind::Unavailable, GitProcess::notFoundMessage());
    const auto top =
        GuardedGit::unprepared(setting, cwd)
            .runCapped({QStringLiteral("rev-parse"), QStringLiteral("--show-toplevel")}, maxReadBytes);
    const QByteArray root = withoutLineEnd(top.out);
    if (top.code != 0 || root.trimmed().isEmpty())
        return tl::unexpected(
            repositoryFault(cwd, GitProcess::failureText(top.err, QStringLiteral("rev-parse"), top.code)));

    const auto git = GuardedGit::open(setting, GitPath::decode(root));
    if (!git)
        return tl::unexpected(git.error());
    RepoStatus status {.root = git->root(), .window = std::max(window, 0)};
    const auto branch =
        git->run({QStringLiteral("rev-parse"), QStringLiteral("--abbrev-ref"), QStringLiteral("HEAD")});
    status.branch = Text::trimWhitespace(branch.out);
    if (status.branch == QStringLiteral("HEAD"))
        status.branch.clear();
    readHistory(*git, status, branch.code == 0);
    readChanges(*git, status);
    readBranches(*git, status);
    readRemotes(*git, status);
    return status;
}

GitTask load(const QString &cwd, int window, QObject *context,
             std::function<void(const Result<RepoStatus> &)> done)
{
    return startGitTask(
        context, [cwd, window](const GitSetting &setting) { return read(setting, cwd, window); },
        std::move(done));
}

} // namespace Vesk::GitStatusReader
