// Writing into a file instead of replacing it, so that it survives being killed in the middle.
#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

namespace Vesk
{

/**
 * Writes into the file itself. Until that is done and on the disk, a record beside it holds the old and the
 * new content whole; finishInterruptedWrite() reads it. A write that fails midway is taken back. In a folder
 * that takes no new file the write goes without a record.
 *
 * `lastLook` as for MarkdownFileWriter::write().
 */
[[nodiscard]] Result<void> writeInPlace(const QString &path, QByteArrayView bytes,
                                        const std::function<bool()> &lastLook = {});

/** What became of a write in place whose record was found. */
struct InterruptedWrite {
    enum class Outcome {
        None,     ///< nothing was interrupted, or the write is still going on
        Finished, ///< the file held a part of the new content and now holds it whole
        Left,     ///< the file holds something else: it stays, and so does the record until discarded
    };
    Outcome outcome = Outcome::None;
    QByteArray unwritten; ///< when Left: the content that did not get there
    QString record;       ///< when Left: the record's path
};

/** Completes what an earlier writeInPlace() of the file was killed in. */
[[nodiscard]] InterruptedWrite finishInterruptedWrite(const QString &path);

/** The record's path for a file free of links. */
[[nodiscard]] QString inPlaceRecordPath(const QString &path);

/** Whether `found` can be what a write of `after` over `before` leaves when it is cut short anywhere. */
[[nodiscard]] bool isCutShort(QByteArrayView found, QByteArrayView before, QByteArrayView after);

} // namespace Vesk
