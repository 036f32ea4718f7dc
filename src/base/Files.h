// Reading and replacing whole files, with errors as values.
#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

#include <sys/types.h>

#include <functional>

namespace Vesk
{

/**
 * The whole content of a file of at most `maxBytes` bytes.
 *
 * NotFound when nothing is there, TooLarge beyond the cap, Unreadable for all else: a folder, a pipe, a
 * missing permission, an input error. Never waits for a writer.
 */
[[nodiscard]] Result<QByteArray> readFile(const QString &path, qsizetype maxBytes);

/**
 * Replaces the content of a file so that a reader sees the old bytes or the new ones, never a mixture.
 *
 * The new file has exactly the permission bits `mode` before it holds its first byte, and its bytes are on
 * the disk before it takes the name. A symbolic link is written through, also when its target does not exist
 * yet. Fails with Unwritable and leaves the old file as it was; what exists and is no plain file is never
 * replaced.
 */
[[nodiscard]] Result<void> writeAtomically(const QString &path, QByteArrayView bytes, mode_t mode = 0644);

/** What a new file owes to the one whose place it takes. */
struct ReplacementRules {
    mode_t mode = 0644; ///< of a file where none was
    /** An existing file hands on its permission bits, owner and group, and is not replaced when we may not
     * write it. Unavailable when its owner or group cannot be kept. */
    bool asBefore = false;
    /** Asked right before the new file takes the name; false gives Unavailable and leaves the old one. */
    std::function<bool()> lastLook {};
    /** Whatever has the name already, be it a link that leads nowhere, keeps it; that gives Unavailable. */
    bool onlyNew = false;
};

/** As above, by rules. */
[[nodiscard]] Result<void> writeAtomically(const QString &path, QByteArrayView bytes,
                                           const ReplacementRules &rules);

} // namespace Vesk
