// What a commit says of itself beyond its subject, and how much it or the work tree changes.
#pragma once

#include "git/GitCommitChanges.h"
#include "git/GitTask.h"

#include <QByteArrayView>
#include <QString>

#include <functional>
#include <optional>

namespace Vesk::GitSummary
{

inline constexpr qint64 maxMessageBytes = 65'536;

/** Sums over all files; of the lines of a binary file git knows nothing. */
struct Sums {
    int added = 0;
    int removed = 0;

    bool operator==(const Sums &) const = default;
};

struct Summary {
    QString body {};             ///< what the message says below its subject; trimmed
    qint64 omittedBytes = 0;     ///< of the message, beyond the limit
    std::optional<Sums> sums {}; ///< absent when git could not tell

    bool operator==(const Summary &) const = default;
};

/** Of a commit, against its first parent. */
GitTask load(const GitCommitChanges::Target &target, const QString &root, QObject *context,
             std::function<void(const Summary &)> done);
/** Of the work tree, staged or not, against HEAD; the body is empty. */
GitTask loadWorkTree(const QString &root, QObject *context, std::function<void(const Summary &)> done);

// The same on the thread that calls.
[[nodiscard]] Summary read(const GitSetting &setting, const GitCommitChanges::Target &target,
                           const QString &root);
[[nodiscard]] Summary readWorkTree(const GitSetting &setting, const QString &root);

/** Adds up `git diff --numstat`. */
[[nodiscard]] Sums parseNumstat(QByteArrayView text);

} // namespace Vesk::GitSummary
