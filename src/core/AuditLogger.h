// The record of what remote control did, and of what the program has to say about itself.
#pragma once

#include "core/AuditEvent.h"
#include "core/AuditLogFile.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <mutex>
#include <optional>

namespace Vesk
{

/** One recorded event. */
struct AuditLogEntry {
    QUuid id;
    QDateTime at; ///< UTC
    AuditKind kind = AuditKind::Info;
    QString summary;
};

/** The log's own failure, as the window shows it. */
struct AuditWriteFailure {
    QString reason;
    qint64 count = 0; ///< write failures since the start, at least 1

    [[nodiscard]] bool operator==(const AuditWriteFailure &) const = default;

    /** The sentence under the warning's title. */
    [[nodiscard]] QString detail() const;

    /** Absent when no failure is in force (`lastFailure` absent or blank). */
    [[nodiscard]] static std::optional<AuditWriteFailure> observed(const std::optional<QString> &lastFailure,
                                                                   qint64 count);
};

/**
 * Keeps the newest entries in memory and appends each to a file. The file is never read back.
 *
 * What it cannot write it counts, and says so: in memory when a run of failures begins, in the file when
 * writing works again. Every function may be called from any thread; the mutex is never held across I/O.
 */
class AuditLogger
{
public:
    static constexpr qsizetype defaultBufferLimit = 500;

    explicit AuditLogger(const QString &path, qsizetype bufferLimit = defaultBufferLimit,
                         AuditFileOperations operations = AuditFileOperations::system());

    /** Records an event; its line is on its way to the disk on return. Failures are accounted, never given.
     */
    void log(const AuditEvent &event);

    /** The newest entries first; while writing fails, led by a row that says so (part of `limit`, not
     * stored). */
    [[nodiscard]] QList<AuditLogEntry> recent(qsizetype limit) const;

    /** The reason of the failure now in force. */
    [[nodiscard]] std::optional<QString> lastFailure() const;
    /** File-write failures since the start; never reset. */
    [[nodiscard]] qint64 failureCount() const;

    [[nodiscard]] const QString &fileURL() const { return m_file.path(); }

private:
    struct Recovery {
        QByteArray line;
        qint64 lost = 0;
    };

    void appendLocked(AuditLogEntry entry);
    [[nodiscard]] std::optional<Recovery> recordWriteResult(const std::optional<QString> &reason,
                                                            qint64 restoringLost);

    const qsizetype m_bufferLimit;
    const AuditLogFile m_file;

    mutable std::mutex m_lock;     // guards everything below
    QList<AuditLogEntry> m_buffer; // oldest first
    qint64 m_failureCount = 0;
    std::optional<QString> m_lastFailure;
    QDateTime m_lastFailureAt;
    bool m_failing = false;
    qint64 m_lostInRun = 0;
};

} // namespace Vesk
