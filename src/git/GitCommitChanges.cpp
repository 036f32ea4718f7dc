#include "git/GitCommitChanges.h"

#include "git/GitDiff.h"
#include "git/GitFields_p.h"
#include "git/GitPath.h"
#include "git/GuardedGit.h"

namespace Vesk::GitCommitChanges
{

Listing read(const GitSetting &setting, const Target &target, const QString &root)
{
    const auto git = GuardedGit::open(setting, root);
    if (!git)
        return {.failure = git.error().text};
    const auto base = target.parent ? target.parent : GitDiff::emptyTree(*git);
    if (!base)
        return {.failure = GitDiff::emptyTreeMessage()};
    const auto output =
        git->runCapped({QStringLiteral("diff-tree"), QStringLiteral("-r"), QStringLiteral("-z"),
                        QStringLiteral("--no-color"), QStringLiteral("--name-status"), QStringLiteral("-M"),
                        *base, target.hash, QStringLiteral("--")},
                       maxOutputBytes);
    if (output.code != 0)
        return {.failure = GitProcess::failureText(output.err, QStringLiteral("diff-tree"), output.code)};
    const bool isClipped = output.out.size() < output.totalOutputBytes;
    return {.changes = parse(trimmedToFieldBoundary(output.out, isClipped)), .isClipped = isClipped};
}

GitTask load(const Target &target, const QString &root, QObject *context,
             std::function<void(const Listing &)> done)
{
    return startGitTask(
        context, [target, root](const GitSetting &setting) { return read(setting, target, root); },
        std::move(done));
}

QList<GitWorkingTree::Change> parse(QByteArrayView text)
{
    QList<GitWorkingTree::Change> changes;
    GitFields fields(text, '\0');
    const auto nextPath = [&]() -> std::optional<QString> {
        const auto field = fields.next();
        return field && !field->isEmpty() ? std::optional(GitPath::decode(*field)) : std::nullopt;
    };
    while (const auto status = fields.next()) {
        if (status->isEmpty())
            break;
        GitWorkingTree::Change change {.index = QChar::fromLatin1(status->front())};
        if (change.index == u'R' || change.index == u'C') {
            change.originalPath = nextPath();
            if (!change.originalPath)
                break;
        }
        const auto path = nextPath();
        if (!path)
            break;
        change.path = *path;
        changes.append(std::move(change));
    }
    return changes;
}

QByteArrayView trimmedToFieldBoundary(QByteArrayView data, bool isClipped)
{
    return isClipped ? data.first(data.lastIndexOf('\0') + 1) : data;
}

} // namespace Vesk::GitCommitChanges
