#include "git/GitSummary.h"

#include "base/Text.h"
#include "git/GitDiff.h"
#include "git/GitFields_p.h"
#include "git/GuardedGit.h"

namespace Vesk::GitSummary
{
namespace
{

constexpr qint64 maxNumstatBytes = 1'048'576;

std::optional<Sums> sumsOf(const GuardedGit &git, const QStringList &trees)
{
    const auto output = git.runCapped(
        QStringList {QStringLiteral("diff"), QStringLiteral("--no-color"), QStringLiteral("--no-ext-diff"),
                     QStringLiteral("--no-textconv"), QStringLiteral("--numstat"), QStringLiteral("-M")}
            + trees + QStringList {QStringLiteral("--")},
        maxNumstatBytes);
    // Of a cut list the sums would be wrong.
    if (output.code != 0 || output.out.size() < output.totalOutputBytes)
        return std::nullopt;
    return parseNumstat(output.out);
}

} // namespace

Summary read(const GitSetting &setting, const GitCommitChanges::Target &target, const QString &root)
{
    const auto git = GuardedGit::open(setting, root);
    if (!git)
        return {};
    Summary summary;
    const auto message =
        git->runCapped({QStringLiteral("log"), QStringLiteral("-1"), QStringLiteral("--no-color"),
                        QStringLiteral("--pretty=format:%b"), target.hash, QStringLiteral("--")},
                       maxMessageBytes);
    if (message.code == 0) {
        summary.omittedBytes = message.totalOutputBytes - message.out.size();
        summary.body = Text::trimWhitespace(
            QString::fromUtf8(GitDiff::trimmedToLineBoundary(message.out, summary.omittedBytes > 0)));
    }
    if (const auto base = target.parent ? target.parent : GitDiff::emptyTree(*git))
        summary.sums = sumsOf(*git, {*base, target.hash});
    return summary;
}

Summary readWorkTree(const GitSetting &setting, const QString &root)
{
    const auto git = GuardedGit::open(setting, root);
    return {.sums = git ? sumsOf(*git, {QStringLiteral("HEAD")}) : std::nullopt};
}

GitTask load(const GitCommitChanges::Target &target, const QString &root, QObject *context,
             std::function<void(const Summary &)> done)
{
    return startGitTask(
        context,
        [target, root](const GitSetting &setting) { return GitSummary::read(setting, target, root); },
        std::move(done));
}

GitTask loadWorkTree(const QString &root, QObject *context, std::function<void(const Summary &)> done)
{
    return startGitTask(
        context, [root](const GitSetting &setting) { return readWorkTree(setting, root); }, std::move(done));
}

Sums parseNumstat(QByteArrayView text)
{
    Sums sums;
    GitFields lines(text, '\n');
    while (const auto line = lines.next()) {
        GitFields columns(*line, '\t');
        // A binary file has "-" in both, which reads as 0.
        if (const auto added = columns.next())
            sums.added += added->toByteArray().toInt();
        if (const auto removed = columns.next())
            sums.removed += removed->toByteArray().toInt();
    }
    return sums;
}

} // namespace Vesk::GitSummary
