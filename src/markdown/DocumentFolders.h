// The folders above a document, some of which may be gone.
#pragma once

#include <QString>

#include <optional>

namespace Vesk
{

/** The directory part of a path; empty when it has none, "/" for an entry of the root. */
[[nodiscard]] QString folderOf(const QString &path);

/** The closest folder above `path` that exists; absent when there is none. */
[[nodiscard]] std::optional<QString> nearestExistingAncestor(const QString &path);

/** The file number of what is at the path; absent when nothing can be told of it. */
[[nodiscard]] std::optional<quint64> inodeOf(const QString &path);

/** How many folders lie between: 1 when `folder` is the direct parent of `below`. */
[[nodiscard]] int levelsBetween(const QString &folder, const QString &below);

} // namespace Vesk
