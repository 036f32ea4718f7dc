#include "core/AuditLogFile.h"

#include <QFile>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;

QString posixReason(int code)
{
    const QString text = QString::fromLocal8Bit(std::strerror(code));
    return u"errno %1 "_s.arg(code) + (text.isEmpty() ? u"알 수 없는 오류"_s : text);
}

/** Closes on every way out. */
class OpenFile
{
public:
    explicit OpenFile(int fd)
        : m_fd(fd)
    {
    }
    ~OpenFile() { ::close(m_fd); }
    Q_DISABLE_COPY_MOVE(OpenFile)

private:
    int m_fd;
};

} // namespace

AuditFileOperations AuditFileOperations::system()
{
    return {
        [](const char *path, int flags, mode_t mode) { return ::open(path, flags, mode); },
        &::write,
        [](int fd, struct stat *status) { return ::fstat(fd, status); },
        &::ftruncate,
    };
}

AuditLogFile::AuditLogFile(QString path, AuditFileOperations operations)
    : m_path(std::move(path))
    , m_operations(operations)
{
}

std::optional<QString> AuditLogFile::append(const QByteArray &line) const
{
    const QByteArray path = QFile::encodeName(m_path);
    const int fd = m_operations.open(path.constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, ownerOnly);
    if (fd < 0)
        return u"열기 실패: "_s + posixReason(errno);
    const OpenFile closer(fd);

    struct stat status {
    };
    std::optional<qint64> sizeBefore;
    if (m_operations.fstat(fd, &status) == 0)
        sizeBefore = status.st_size;

    qint64 wrote = 0;
    while (wrote < line.size()) {
        const qint64 remaining = line.size() - wrote;
        const ssize_t written =
            m_operations.write(fd, line.constData() + wrote, static_cast<size_t>(remaining));
        if (written > 0) {
            wrote += written;
            continue;
        }
        if (written < 0 && errno == EINTR)
            continue;
        const QString reason = written < 0 ? u"쓰기 실패: "_s + posixReason(errno)
                                           : u"쓰기 실패: 진전 0바이트(남은 %1바이트)"_s.arg(remaining);
        return reason + rollbackTornWrite(fd, wrote, sizeBefore);
    }
    return std::nullopt;
}

QString AuditLogFile::rollbackTornWrite(int fd, qint64 wrote, std::optional<qint64> sizeBefore) const
{
    if (wrote < 1)
        return {};
    if (!sizeBefore)
        return u" · 찢긴 조각 %1바이트를 되돌리지 못했다(쓰기 직전 크기를 못 읽었다)"_s.arg(wrote);
    struct stat status {
    };
    if (m_operations.fstat(fd, &status) != 0) {
        const QString reason = posixReason(errno);
        return u" · 찢긴 조각 %1바이트를 되돌리지 못했다(현재 크기를 못 읽었다: "_s.arg(wrote) + reason
            + u")"_s;
    }
    // Another writer has appended behind the fragment: cutting would destroy its line.
    if (status.st_size != *sizeBefore + wrote)
        return u" · 찢긴 조각 %1바이트를 남겼다(그 뒤에 다른 쓰기가 있어 자르지 않았다)"_s.arg(wrote);
    if (m_operations.ftruncate(fd, *sizeBefore) != 0) {
        const QString reason = posixReason(errno);
        return u" · 찢긴 조각 %1바이트를 되돌리지 못했다: "_s.arg(wrote) + reason;
    }
    return {};
}

} // namespace Vesk
