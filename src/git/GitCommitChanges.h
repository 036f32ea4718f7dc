// The files that a commit touched.
#pragma once

#include "git/GitTask.h"
#include "git/GitWorkingTree.h"

#include <QByteArrayView>
#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace Vesk::GitCommitChanges
{

inline constexpr qint64 maxOutputBytes = 1'048'576;

/** A commit, and what it is compared with. */
struct Target {
    QString hash {};
    std::optional<QString> parent {}; ///< the first one; a root commit has none

    bool operator==(const Target &) const = default;
};

struct Listing {
    QList<GitWorkingTree::Change> changes {};
    bool isClipped = false;            ///< there are more than are read
    std::optional<QString> failure {}; ///< for people

    bool operator==(const Listing &) const = default;
};

GitTask load(const Target &target, const QString &root, QObject *context,
             std::function<void(const Listing &)> done);

/** The same on the thread that calls. */
[[nodiscard]] Listing read(const GitSetting &setting, const Target &target, const QString &root);

/** Parses `git diff-tree -z --name-status`. The letter becomes the staged side of the change. */
[[nodiscard]] QList<GitWorkingTree::Change> parse(QByteArrayView text);

/** Of a clipped output the whole fields. */
[[nodiscard]] QByteArrayView trimmedToFieldBoundary(QByteArrayView data, bool isClipped);

} // namespace Vesk::GitCommitChanges
