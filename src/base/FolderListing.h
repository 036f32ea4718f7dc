// The plain files of a folder, each with what tells whether it has changed since.
#pragma once

#include "base/Result.h"

#include <QDateTime>
#include <QList>
#include <QString>

namespace Vesk
{

/** One file, and the stamp of the state it was seen in. */
struct ListedFile {
    QString path;
    qint64 size = 0;
    qint64 modifiedNs = 0; ///< nanoseconds since 1970

    [[nodiscard]] QDateTime modified() const;
    [[nodiscard]] bool sameState(const ListedFile &other) const
    {
        return size == other.size && modifiedNs == other.modifiedNs;
    }
};

/**
 * The regular files of a folder whose names end in `suffix` (as in ".json"), hidden ones included, in no
 * order. Links, folders and files that vanish meanwhile are left out. NotFound for a missing folder,
 * Unreadable for one that cannot be listed.
 */
[[nodiscard]] Result<QList<ListedFile>> regularFiles(const QString &folder, QLatin1StringView suffix);

/** Newest first; of the same age by path, so that the order is always the same. */
void sortNewestFirst(QList<ListedFile> &files);

} // namespace Vesk
