// What a document's model does on the disk: values in, values out, on any thread.
#pragma once

#include <QString>

#include <optional>

namespace Vesk
{

/** What is at a document's path. */
struct DiskSight {
    bool exists = false;
    std::optional<QString> text; ///< absent when it does not exist, cannot be read or is not UTF-8 throughout
};

struct DiskJob {
    enum class Kind {
        Look,       ///< at the disk, no more
        Autosave,   ///< write unless the file is gone, unreadable, or changed by others since `savedText`
        ForcedSave, ///< write unless the file cannot be read
    };
    Kind kind = Kind::Look;
    QString path;
    QString text;
    QString savedText;
};

struct DiskReport {
    enum class Outcome {
        NotWritten, ///< nothing to write, or the sight forbids it
        HeldBack,   ///< others changed the file
        Unresolved, ///< its symbolic links lead nowhere
        Failed,
        Written,
    };
    DiskSight seen; ///< before the write
    Outcome outcome = Outcome::NotWritten;
    QString written;          ///< what the disk holds now: the text, repaired where it was no valid Unicode
    quint64 links = 0;        ///< names of the file; 0 when no write was tried
    int hops = 0;             ///< when Unresolved
    QString error;            ///< when Failed
    qsizetype characters = 0; ///< of the text that was not written
};

[[nodiscard]] DiskSight lookAtDisk(const QString &path);
[[nodiscard]] DiskReport perform(const DiskJob &job);

} // namespace Vesk
