// Pictures that were pasted or dropped: kept as files, because the agent is given paths.
#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <memory>
#include <optional>

class QImage;
class QMimeData;

namespace Vesk::AttachmentCache
{

/** A file of the cache. */
struct CachedFile {
    QString path;
    QDateTime modified;
    qint64 size = 0;
};

/** A picture as the clipboard gave it: its bytes where there were any, else the picture itself. */
struct PastedImage {
    QByteArray bytes;
    std::shared_ptr<QImage> image {}; ///< null when there are bytes
};

inline constexpr std::chrono::seconds maxAge {604'800};
inline constexpr qint64 maxTotalBytes = 268'435'456;

/** The folder for pictures below the caches folder of the program; made when it is not there. */
[[nodiscard]] QString directory(const QString &cachesDir);

/** The files that a clipboard or a drop names, those that exist. */
[[nodiscard]] QStringList attachablePaths(const QMimeData &data);
/** The picture of a clipboard or a drop that names no files. Cheap: nothing is decoded here. */
[[nodiscard]] std::optional<PastedImage> attachableImage(const QMimeData &data);

/** Writes a picture as `<prefix>-<yyyyMMdd-HHmmss>-<UUID>.png`, readable by the user alone, and tells the
    path. Malformed when the bytes are no whole picture. Blocks: a large one takes seconds. */
[[nodiscard]] Result<QString> savePastedImage(const PastedImage &pasted, const QString &folder,
                                              const QDateTime &now,
                                              const QString &prefix = QStringLiteral("attach"));

/** Whether this is a name that savePastedImage() gives: it tells a person nothing. */
[[nodiscard]] bool isGivenName(const QString &fileName);

/** The files to remove: all older than `age`, then the oldest until no more than `totalBytes` are left. */
[[nodiscard]] QStringList prunePlan(QList<CachedFile> files, const QDateTime &now, std::chrono::seconds age,
                                    qint64 totalBytes);
/** Removes them from the folder. A folder that is not there is not made; failures are silent. */
void prune(const QString &folder, const QDateTime &now);
/** prune() of the cache in the background. */
void pruneAtLaunch(const QString &cachesDir);

} // namespace Vesk::AttachmentCache
