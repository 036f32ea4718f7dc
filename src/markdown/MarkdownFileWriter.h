// Where the bytes of a document go, and how they get there.
#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

#include <functional>

namespace Vesk::MarkdownFileWriter
{

/** Where a write to a path really goes: behind its symbolic links, so that those stay links. */
struct Target {
    bool resolved = false;
    QString path; ///< free of links; the file need not exist. Empty when unresolved.
    int hops = 0; ///< how many links were followed in vain; 0 when resolved
};

inline constexpr int maxHops = 8;

[[nodiscard]] Target target(const QString &path);
/** What is said of a target that is not resolved. */
[[nodiscard]] QString unresolvedText();

/** The number of names the file has; 1 when there is no file. */
[[nodiscard]] quint64 hardLinkCount(const QString &path);

/**
 * Replaces the content of `resolved`, which is on the disk on return. A file of one name is replaced in one
 * step; one of several names is written in place, so that all of them keep showing the same content, and so
 * is one whose owner a new file could not have. Permissions and owner stay. A file that may not be written
 * stays as it is.
 *
 * `lastLook` is asked right before the old content goes; false gives Unavailable and keeps that.
 */
[[nodiscard]] Result<void> write(const QString &resolved, QByteArrayView bytes,
                                 const std::function<bool()> &lastLook = {});

} // namespace Vesk::MarkdownFileWriter
