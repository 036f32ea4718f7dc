// The environment of a git call: what closes the roads by which a repository could start a program.
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QByteArrayView>
#include <QList>

#include <optional>

namespace Vesk::GitEnvironment
{

/** A setting that goes above every file, as "section.subsection.name". */
struct Setting {
    QByteArray key;
    QByteArray value;

    bool operator==(const Setting &) const = default;
};

/** A line of `git config --list --show-scope --show-origin -z`. */
struct ListedSetting {
    QByteArray scope;                ///< "system", "global", "local", "worktree", "command"
    QByteArray origin;               ///< "file:<path>"
    QByteArray key;                  ///< section and name in lower case, the subsection as it is
    std::optional<QByteArray> value; ///< absent for a bare key

    /** Written in the repository, or by a file that it includes: nothing that the user vouched for. */
    [[nodiscard]] bool isOfRepository() const;
};

/** This process's environment, "NAME=value". */
[[nodiscard]] QByteArrayList inherited();

/** `inherited` without what would lead git to another repository, configuration or program, and with what
   keeps it from asking, locking and prompting. */
[[nodiscard]] QByteArrayList base(const QByteArrayList &inherited);

/**
 * The base, for calls that read: no protocol is allowed, so that a missing object is never fetched; paths are
 * meant literally; hooks, shown signatures, refreshing of the index and what would change the form of the
 * output are off. `closed` goes on top.
 */
[[nodiscard]] QByteArrayList forReading(const QByteArrayList &base, const QList<Setting> &closed);

/** The base, for a fetch; `settings` go on top. A wish of the user's that restricts protocols stays. */
[[nodiscard]] QByteArrayList forFetch(const QByteArrayList &base, const QList<Setting> &settings);

/** Parses that listing; a broken end is left out. */
[[nodiscard]] QList<ListedSetting> parseListing(QByteArrayView bytes);

/**
 * What has to be set so that nothing which a repository defines is run by a read: for each such key the value
 * of the user's own scopes, else the one that switches it off. Filters, and diffs that enter submodules: all
 * else is closed by the options of the calls and by forReading().
 */
[[nodiscard]] QList<Setting> closedRoads(const QList<ListedSetting> &settings);

} // namespace Vesk::GitEnvironment
