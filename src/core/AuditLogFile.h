// The file behind the audit log: whole lines appended, torn ones taken back.
#pragma once

#include <QByteArray>
#include <QString>

#include <sys/stat.h>
#include <sys/types.h>

#include <optional>

namespace Vesk
{

/** The system calls that the log file is written with, so that a full disk or a torn write can be played. */
struct AuditFileOperations {
    int (*open)(const char *path, int flags, mode_t mode);
    ssize_t (*write)(int fd, const void *bytes, size_t count);
    int (*fstat)(int fd, struct stat *status);
    int (*ftruncate)(int fd, off_t size);

    /** The system's own. */
    [[nodiscard]] static AuditFileOperations system();
};

/** Append-only, opened and closed per line. Holds no state but the path: callable from any thread at once. */
class AuditLogFile
{
public:
    explicit AuditLogFile(QString path, AuditFileOperations operations = AuditFileOperations::system());

    /** Appends the line's bytes; absent on success, else the reason with what is left of a torn line. */
    [[nodiscard]] std::optional<QString> append(const QByteArray &line) const;

    [[nodiscard]] const QString &path() const { return m_path; }

private:
    [[nodiscard]] QString rollbackTornWrite(int fd, qint64 wrote, std::optional<qint64> sizeBefore) const;

    QString m_path;
    AuditFileOperations m_operations;
};

} // namespace Vesk
