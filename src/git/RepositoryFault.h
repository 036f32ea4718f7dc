// Why git finds no work tree in a folder, or will not write to the one that it finds.
#pragma once

#include "base/Result.h"

#include <QString>

namespace Vesk
{

/**
 * Told by what lies in the folder and above it, whatever language git speaks. NotFound when there is no trace
 * of a repository; else Unreadable, with a sentence for people or with git's own `words`.
 */
[[nodiscard]] Error repositoryFault(const QString &folder, const QString &words);

/**
 * For people, the path of the lock of the index in the work tree at `root` when it has been there for longer
 * than a git at work holds it; else empty. `now` in seconds since the epoch.
 */
[[nodiscard]] QString leftBehindLock(const QString &root, qint64 now);

} // namespace Vesk
