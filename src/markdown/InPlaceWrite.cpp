#include "markdown/InPlaceWrite.h"

#include "base/Files.h"
#include "markdown/DocumentFolders.h"
#include "markdown/MarkdownEvacuation.h"

#include <QFile>
#include <QLoggingCategory>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace Vesk
{
namespace
{

Q_LOGGING_CATEGORY(lcInPlace, "vesk.markdown.inplace")

constexpr qsizetype maxInPlaceBytes = qsizetype(512) * 1024 * 1024;
constexpr char recordMark[] = "vesk-inplace 1";

struct InPlaceRecord {
    QByteArray before;
    QByteArray after;
};

// One line with both sizes, then the contents one behind the other.
QByteArray encodeRecord(QByteArrayView before, QByteArrayView after)
{
    QByteArray bytes = QByteArray(recordMark) + ' ' + QByteArray::number(before.size()) + ' '
        + QByteArray::number(after.size()) + '\n';
    bytes.reserve(bytes.size() + before.size() + after.size());
    return bytes.append(before).append(after);
}

std::optional<InPlaceRecord> decodeRecord(const QByteArray &bytes)
{
    const qsizetype end = bytes.indexOf('\n');
    const auto words = bytes.left(std::max<qsizetype>(end, 0)).split(' ');
    if (words.size() != 4 || words[0] + ' ' + words[1] != recordMark)
        return std::nullopt;
    const qlonglong before = words[2].toLongLong();
    const qlonglong after = words[3].toLongLong();
    if (before < 0 || after < 0 || before > bytes.size() || after > bytes.size()
        || end + 1 + before + after != bytes.size())
        return std::nullopt;
    return InPlaceRecord {bytes.mid(end + 1, before), bytes.mid(end + 1 + before)};
}

class WrittenFile
{
public:
    explicit WrittenFile(const QString &path)
        : m_fd(::open(QFile::encodeName(path).constData(), O_WRONLY | O_CLOEXEC | O_NONBLOCK))
    {
    }
    ~WrittenFile()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    WrittenFile(const WrittenFile &) = delete;
    WrittenFile &operator=(const WrittenFile &) = delete;

    [[nodiscard]] bool isOpen() const { return m_fd >= 0; }
    // Held while a write in place goes on; the system lets go of it when we are killed.
    [[nodiscard]] bool lock() const { return ::flock(m_fd, LOCK_EX | LOCK_NB) == 0; }

    // From the front, the length last: isCutShort() counts on it. 0 or the number of the error.
    [[nodiscard]] int fill(QByteArrayView bytes) const
    {
        qsizetype done = 0;
        while (done < bytes.size()) {
            const ssize_t size = ::pwrite(m_fd, bytes.data() + done, std::size_t(bytes.size() - done), done);
            if (size < 0 && errno != EINTR)
                return errno;
            done += std::max<ssize_t>(size, 0);
        }
        return ::ftruncate(m_fd, bytes.size()) == 0 && ::fsync(m_fd) == 0 ? 0 : errno;
    }

private:
    int m_fd;
};

tl::unexpected<Error> cannotFill(const QString &path, int error)
{
    return failure(ErrorKind::Unwritable,
                   QStringLiteral("cannot write %1: %2").arg(path, qt_error_string(error)));
}

bool takesNewFiles(const QString &folder)
{
    return ::faccessat(AT_FDCWD, QFile::encodeName(folder).constData(), W_OK | X_OK, AT_EACCESS) == 0;
}

} // namespace

QString inPlaceRecordPath(const QString &path)
{
    return folderOf(path) + QStringLiteral("/.vesk-inplace-") + pathFingerprint(path);
}

bool isCutShort(QByteArrayView found, QByteArrayView before, QByteArrayView after)
{
    const qsizetype compared = std::min(found.size(), after.size());
    const qsizetype done =
        std::mismatch(found.begin(), found.begin() + compared, after.begin()).first - found.begin();
    const QByteArrayView rest = done < before.size() ? before.sliced(done) : QByteArrayView();
    return found.sliced(done) == rest;
}

Result<void> writeInPlace(const QString &path, QByteArrayView bytes, const std::function<bool()> &lastLook)
{
    const WrittenFile file(path);
    if (!file.isOpen())
        return cannotFill(path, errno);
    const auto before = readFile(path, maxInPlaceBytes);
    if (!before)
        return tl::unexpected(before.error());
    const QString record = inPlaceRecordPath(path);
    const QByteArray recordName = QFile::encodeName(record);
    if (!file.lock())
        qCWarning(lcInPlace).noquote() << path << "is being written by another";
    if (takesNewFiles(folderOf(path))) {
        if (auto kept = writeAtomically(record, encodeRecord(*before, bytes), 0600); !kept)
            return kept;
    }
    if (lastLook && !lastLook()) {
        ::unlink(recordName.constData());
        return failure(ErrorKind::Unavailable, path + QStringLiteral(" changed meanwhile"));
    }
    if (const int error = file.fill(bytes); error != 0) {
        if (file.fill(*before) == 0)
            ::unlink(recordName.constData());
        return cannotFill(path, error);
    }
    ::unlink(recordName.constData());
    return {};
}

InterruptedWrite finishInterruptedWrite(const QString &path)
{
    const QString record = inPlaceRecordPath(path);
    const auto bytes = readFile(record, 2 * maxInPlaceBytes);
    const auto kept = bytes ? decodeRecord(*bytes) : std::nullopt;
    if (!kept)
        return {};
    const WrittenFile file(path);
    if (file.isOpen() && !file.lock())
        return {}; // in this moment
    const auto found = readFile(path, maxInPlaceBytes);
    const QByteArray recordName = QFile::encodeName(record);
    if (found && *found == kept->after) {
        ::unlink(recordName.constData());
        return {};
    }
    if (!found || !file.isOpen() || !isCutShort(*found, kept->before, kept->after)
        || file.fill(kept->after) != 0)
        return {InterruptedWrite::Outcome::Left, kept->after, record};
    ::unlink(recordName.constData());
    return {InterruptedWrite::Outcome::Finished, {}, {}};
}

} // namespace Vesk
