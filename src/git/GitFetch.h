// The one git call that reaches out and writes: refused where the repository would have it run something.
#pragma once

#include "git/GitTask.h"

#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>

namespace Vesk::GitFetch
{

inline constexpr std::chrono::seconds timeLimit {60};

struct Outcome {
    enum class Kind {
        Fetched,
        Blocked, ///< by the repository's configuration; nothing was run
        Failed,
        NoRemote ///< nothing was run
    };

    Kind kind = Kind::Failed;
    QString text {};     ///< for people: of Fetched a summary, of Failed what failed
    QStringList keys {}; ///< of Blocked: the settings, in lower case

    bool operator==(const Outcome &) const = default;
};

/** Fetches from all remotes of the repository at `root`. `hasRemote` is RepoStatus::hasAnyRemote. */
GitTask run(const QString &root, bool hasRemote, QObject *context, std::function<void(const Outcome &)> done);

/** The same on the thread that calls. */
[[nodiscard]] Outcome perform(const GitSetting &setting, const QString &root, bool hasRemote,
                              std::chrono::seconds limit = timeLimit);

/** A setting whose value makes git run something, or hands a credential or cookies to a repository's say-so.
 */
[[nodiscard]] bool isCommandKey(const QString &key);

/** Such settings of the repository's own scopes, each once, in lower case, from the output of
    `git config --list --show-scope --name-only -z`. */
[[nodiscard]] QStringList blockingKeys(QByteArrayView text);

/** Whether pruning can reach nothing but what follows a remote. The records are those of
    `git config -z --get-regexp`. */
[[nodiscard]] bool pruneIsSafe(QByteArrayView fetchRefspecs);

/** What a fetch did, from its error text. */
[[nodiscard]] QString summary(const QString &error, bool pruneSkipped);

} // namespace Vesk::GitFetch
