// Where edits go that cannot be saved to their file: a copy beside it.
#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

#include <functional>
#include <optional>

namespace Vesk
{

/** Why edits could not be saved to their file. */
enum class EvacuationReason { FileMissing, Unreadable, ExternalChange, SaveFailed };

/** The reason as the log tells it. */
[[nodiscard]] QString evacuationReasonText(EvacuationReason reason);

/** Where a copy can go. */
struct EvacuationSlot {
    enum class Kind {
        Use,          ///< `path` is free
        AlreadySaved, ///< `path` holds the same bytes
        Exhausted,    ///< every name is taken by something else
    };
    Kind kind = Kind::Exhausted;
    QString path;
    bool operator==(const EvacuationSlot &) const = default;
};

/** What stands at a path: absent when nothing does; no bytes when they cannot be read. */
struct EvacuationCandidate {
    std::optional<QByteArray> bytes;
};
using WhatIsThere = std::function<std::optional<EvacuationCandidate>(const QString &path)>;

inline constexpr int evacuationAttempts = 50;

/**
 * The file in the folder `under` that takes the copy `body` of the document at `path`. Its name tells the
 * document's path below `under`, so that documents of one name stay apart.
 */
[[nodiscard]] EvacuationSlot evacuationURL(const QString &path, const QString &under, const QByteArray &body,
                                           const WhatIsThere &whatIsThere);

/** What evacuationURL() asks, answered by the disk. */
[[nodiscard]] std::optional<EvacuationCandidate> whatIsOnDisk(const QString &path);

/** The permission bits of a copy: the document's own, or the owner's alone when it is gone. */
[[nodiscard]] mode_t evacuationMode(const QString &path);

/** 8 hexadecimal digits: the upper half of the 64-bit FNV-1a hash of the path in UTF-8. */
[[nodiscard]] QString pathFingerprint(const QString &path);

} // namespace Vesk
