#include "git/GitDiff.h"

#include "base/Text.h"
#include "git/GitCommitChanges.h"
#include "git/GuardedGit.h"

namespace Vesk::GitDiff
{
namespace
{

FileDiff failed(const QString &message)
{
    return {.content = {.kind = Content::Kind::Failed, .failure = message}};
}

FileDiff run(const GuardedGit &git, const QStringList &arguments, const QList<int> &acceptedCodes)
{
    const auto output = git.runCapped(arguments, maxOutputBytes);
    FileDiff diff = assemble(output.code, output.out, output.totalOutputBytes, output.err, acceptedCodes);
    GitWordDiff::emphasise(diff.content.lines);
    return diff;
}

/** No program of the user's or the repository's may run for a read. */
QStringList command(const QStringList &rest)
{
    return QStringList {QStringLiteral("diff"), QStringLiteral("--no-color"), QStringLiteral("--no-ext-diff"),
                        QStringLiteral("--no-textconv")}
    + rest;
}

QStringList pathsOf(const GitWorkingTree::Change &change)
{
    QStringList paths {QStringLiteral("--"), change.path};
    if (change.originalPath)
        paths << *change.originalPath;
    return paths;
}

FileDiff readUntracked(const GuardedGit &git, const QString &path)
{
    // A lone "-" would be the standard input.
    const QString file = path == QStringLiteral("-") ? QStringLiteral("./-") : path;
    return run(git,
               {QStringLiteral("diff"), QStringLiteral("--no-index"), QStringLiteral("--no-color"),
                QStringLiteral("--no-ext-diff"), QStringLiteral("--no-textconv"), QStringLiteral("--"),
                QStringLiteral("/dev/null"), file},
               {0, 1}); // 1 says that there is a difference
}

/** HEAD, or the empty tree before the first commit. */
std::optional<QString> baseOf(const GuardedGit &git)
{
    const auto head = git.run({QStringLiteral("rev-parse"), QStringLiteral("--verify"),
                               QStringLiteral("--quiet"), QStringLiteral("HEAD")});
    return head.code == 0 ? QStringLiteral("HEAD") : emptyTree(git);
}

} // namespace

std::optional<QString> emptyTree(const GuardedGit &git)
{
    const auto output = git.run({QStringLiteral("hash-object"), QStringLiteral("-t"), QStringLiteral("tree"),
                                 QStringLiteral("/dev/null")});
    const QString id = Text::trimWhitespace(output.out);
    return output.code == 0 && !id.isEmpty() ? std::optional(id) : std::nullopt;
}

QString emptyTreeMessage()
{
    return QStringLiteral("빈 트리를 계산하지 못했습니다");
}

FileDiff read(const GitSetting &setting, const GitWorkingTree::Change &change, const QString &root)
{
    if (change.isFolder())
        return {.content = {.kind = Content::Kind::Directory}};
    const auto git = GuardedGit::open(setting, root);
    if (!git)
        return failed(git.error().text);
    if (change.kind() == GitWorkingTree::Change::Kind::Untracked)
        return readUntracked(*git, change.path);
    const auto base = baseOf(*git);
    if (!base)
        return failed(emptyTreeMessage());
    return run(*git, command(QStringList {QStringLiteral("-M"), *base} + pathsOf(change)), {0});
}

FileDiff read(const GitSetting &setting, const GitWorkingTree::Change &change, const QString &root,
              const GitCommitChanges::Target &commit)
{
    const auto git = GuardedGit::open(setting, root);
    if (!git)
        return failed(git.error().text);
    const auto base = commit.parent ? commit.parent : emptyTree(*git);
    if (!base)
        return failed(emptyTreeMessage());
    return run(*git, command(QStringList {QStringLiteral("-M"), *base, commit.hash} + pathsOf(change)), {0});
}

GitTask load(const GitWorkingTree::Change &change, const QString &root, QObject *context,
             std::function<void(const FileDiff &)> done)
{
    return startGitTask(
        context, [change, root](const GitSetting &setting) { return read(setting, change, root); },
        std::move(done));
}

GitTask load(const GitWorkingTree::Change &change, const QString &root,
             const GitCommitChanges::Target &commit, QObject *context,
             std::function<void(const FileDiff &)> done)
{
    return startGitTask(
        context,
        [change, root, commit](const GitSetting &setting) { return read(setting, change, root, commit); },
        std::move(done));
}

} // namespace Vesk::GitDiff
