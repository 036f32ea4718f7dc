#include "base/Files.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <optional>
#include <utility>

namespace Vesk
{
namespace
{

class Descriptor
{
public:
    explicit Descriptor(int fd)
        : m_fd(fd)
    {
    }
    ~Descriptor() { close(); }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    [[nodiscard]] int get() const { return m_fd; }
    [[nodiscard]] bool isOpen() const { return m_fd >= 0; }
    bool close() { return m_fd < 0 || ::close(std::exchange(m_fd, -1)) == 0; }

private:
    int m_fd;
};

template <typename Call>
auto withoutInterruption(Call call)
{
    auto outcome = call();
    while (outcome < 0 && errno == EINTR)
        outcome = call();
    return outcome;
}

QString reason(const QString &what, const QString &path, int error)
{
    return what + u' ' + path + QStringLiteral(": ") + qt_error_string(error);
}

tl::unexpected<Error> cannotRead(const QString &path, int error)
{
    const bool missing = error == ENOENT || error == ENOTDIR;
    return failure(missing ? ErrorKind::NotFound : ErrorKind::Unreadable,
                   reason(QStringLiteral("cannot read"), path, error));
}

tl::unexpected<Error> cannotWrite(const QString &path, int error)
{
    return failure(ErrorKind::Unwritable, reason(QStringLiteral("cannot write"), path, error));
}

// Where a write to `path` really goes: follows symbolic links, to a missing target too. Empty for a loop.
QByteArray writtenPath(QByteArray path)
{
    constexpr int mostLinks = 40;
    std::array<char, PATH_MAX> target {};
    for (int i = 0; i < mostLinks; ++i) {
        const ssize_t size = ::readlink(path.constData(), target.data(), target.size());
        if (size < 0)
            return path; // not a link, or nothing there
        const QByteArray link(target.data(), size);
        path = link.startsWith('/') ? link : path.left(path.lastIndexOf('/') + 1) + link;
    }
    return {};
}

int writeAll(int fd, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t written = withoutInterruption(
            [&] { return ::write(fd, bytes.data(), static_cast<std::size_t>(bytes.size())); });
        if (written < 0)
            return errno;
        bytes = bytes.sliced(written);
    }
    return 0;
}

// Gives the file its mode, content and place on the disk; the number of the first error, or 0.
int fill(Descriptor &file, QByteArrayView bytes, mode_t mode)
{
    if (::fchmod(file.get(), mode) != 0)
        return errno;
    if (const int error = writeAll(file.get(), bytes); error != 0)
        return error;
    if (withoutInterruption([&] { return ::fsync(file.get()); }) != 0)
        return errno;
    return file.close() ? 0 : errno;
}

} // namespace

Result<QByteArray> readFile(const QString &path, qsizetype maxBytes)
{
    const QByteArray name = QFile::encodeName(path);
    // Not blocking: a pipe in the file's place must not hold us until someone writes.
    const Descriptor file(
        withoutInterruption([&] { return ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); }));
    struct stat status {
    };
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0)
        return cannotRead(path, errno);
    if (S_ISDIR(status.st_mode))
        return cannotRead(path, EISDIR);
    if (!S_ISREG(status.st_mode) && !S_ISCHR(status.st_mode))
        return cannotRead(path, EINVAL);

    // The size is only a hint: the file may grow, and those of the kernel have none.
    constexpr qsizetype step = 64 * 1024;
    const auto tooLarge = [&] {
        return failure(ErrorKind::TooLarge,
                       QStringLiteral("%1 has more than %2 bytes").arg(path).arg(maxBytes));
    };
    if (status.st_size > maxBytes)
        return tooLarge();
    QByteArray bytes;
    qsizetype size = 0;
    bytes.resize(std::min<qsizetype>(status.st_size > 0 ? status.st_size : step, maxBytes) + 1);
    for (;;) {
        if (size == bytes.size())
            bytes.resize(std::min(size * 2 + step, maxBytes + 1));
        const ssize_t got = withoutInterruption([&] {
            return ::read(file.get(), bytes.data() + size, static_cast<std::size_t>(bytes.size() - size));
        });
        if (got < 0)
            return cannotRead(path, errno);
        if (got == 0)
            break;
        size += got;
        if (size > maxBytes)
            return tooLarge();
    }
    bytes.truncate(size);
    return bytes;
}

Result<void> writeAtomically(const QString &path, QByteArrayView bytes, mode_t mode)
{
    const QByteArray target = writtenPath(QFile::encodeName(path));
    if (target.isEmpty())
        return cannotWrite(path, path.isEmpty() ? ENOENT : ELOOP);
    struct stat status {
    };
    if (::stat(target.constData(), &status) == 0 && !S_ISREG(status.st_mode))
        return cannotWrite(path, S_ISDIR(status.st_mode) ? EISDIR : EINVAL);

    const QByteArray folder = target.left(target.lastIndexOf('/') + 1);
    QByteArray temporary = folder + ".vesk-write-XXXXXX";
    Descriptor file(::mkostemp(temporary.data(), O_CLOEXEC)); // made with 0600
    if (!file.isOpen())
        return cannotWrite(path, errno);
    int error = fill(file, bytes, mode);
    if (error == 0 && ::rename(temporary.constData(), target.constData()) != 0)
        error = errno;
    if (error != 0) {
        ::unlink(temporary.constData());
        return cannotWrite(path, error);
    }
    // The rename itself survives a power cut only with the folder on the disk; some file systems refuse this.
    const Descriptor directory(
        ::open(folder.isEmpty() ? "." : folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.isOpen())
        ::fsync(directory.get());
    return {};
}

} // namespace Vesk
