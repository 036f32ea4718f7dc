#include "base/Files.h"

#include <QFile>
#include <QRandomGenerator>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdlib>
#include <optional>
#include <thread>
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
    Descriptor(Descriptor &&) = delete;
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        return *this;
    }

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

/**
 * A file that takes its name when it is whole. Until then it has none, so that nothing is left of it when we
 * are killed; where the file system knows no such files it lies beside the target under a name of its own.
 */
class NewFile
{
public:
    explicit NewFile(const QByteArray &target)
        : m_target(target)
        , m_folder(target.left(target.lastIndexOf('/') + 1))
    {
        const QByteArray where = m_folder.isEmpty() ? QByteArrayLiteral(".") : m_folder;
        m_file = Descriptor(::open(where.constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600));
        if (m_file.isOpen() && ::access(linkOf(m_file).constData(), F_OK) == 0)
            return;
        m_name = m_folder + ".vesk-write-XXXXXX";
        m_file = Descriptor(::mkostemp(m_name.data(), O_CLOEXEC)); // made with 0600
        if (!m_file.isOpen())
            m_name.clear();
    }
    ~NewFile()
    {
        if (!m_name.isEmpty())
            ::unlink(m_name.constData());
    }
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;

    [[nodiscard]] const Descriptor &file() const { return m_file; }

    // Gives the file its content and place on the disk; the number of the first error, or 0.
    [[nodiscard]] int fill(QByteArrayView bytes)
    {
        if (const int error = writeAll(m_file.get(), bytes); error != 0)
            return error;
        if (withoutInterruption([&] { return ::fsync(m_file.get()); }) != 0)
            return errno;
        for (int attempt = 0; m_name.isEmpty() && attempt < 100; ++attempt) {
            const QByteArray name =
                m_folder + ".vesk-write-" + QByteArray::number(QRandomGenerator::system()->generate64(), 36);
            if (::linkat(AT_FDCWD, linkOf(m_file).constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW)
                == 0)
                m_name = name;
            else if (errno != EEXIST)
                return errno;
        }
        return m_file.close() ? 0 : errno;
    }

    [[nodiscard]] int takeName(bool onlyNew)
    {
        if ((onlyNew ? takeFreeName() : ::rename(m_name.constData(), m_target.constData())) != 0)
            return errno;
        m_name.clear();
        // The rename itself survives a power cut only with the folder on the disk; some file systems refuse
        // this.
        const Descriptor directory(
            ::open(m_folder.isEmpty() ? "." : m_folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (directory.isOpen())
            ::fsync(directory.get());
        return 0;
    }

private:
    [[nodiscard]] int takeFreeName() const
    {
        const char *from = m_name.constData();
        const char *to = m_target.constData();
        if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
            return 0;
        if (errno != EINVAL && errno != ENOSYS)
            return -1;
        // This file system cannot; a second name never takes the place of anything either.
        if (::link(from, to) != 0)
            return -1;
        ::unlink(from);
        return 0;
    }

    static QByteArray linkOf(const Descriptor &file)
    {
        return "/proc/self/fd/" + QByteArray::number(file.get());
    }

    QByteArray m_target;
    QByteArray m_folder;
    QByteArray m_name;
    Descriptor m_file {-1};
};

/**
 * Opens the file that is to be replaced, and waits a little until no other who asks for a last look is
 * between look and rename. Who replaces it first takes its name away, and the next one sees that. -1 without
 * a file.
 */
int takeTurn(const QByteArray &target)
{
    constexpr int attempts = 50;
    const int file = ::open(target.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    for (int attempt = 0; file >= 0 && attempt < attempts && ::flock(file, LOCK_EX | LOCK_NB) != 0; ++attempt)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return file;
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
    return writeAtomically(path, bytes, ReplacementRules {.mode = mode});
}

Result<void> writeAtomically(const QString &path, QByteArrayView bytes, const ReplacementRules &rules)
{
    const auto changed = [&path] {
        return failure(ErrorKind::Unavailable, path + QStringLiteral(" changed meanwhile"));
    };
    const QByteArray name = QFile::encodeName(path);
    const QByteArray target = rules.onlyNew ? name : writtenPath(name);
    if (target.isEmpty())
        return cannotWrite(path, path.isEmpty() ? ENOENT : ELOOP);
    struct stat old {
    };
    const bool exists = ::stat(target.constData(), &old) == 0;
    if (exists && rules.onlyNew)
        return changed();
    if (exists && !S_ISREG(old.st_mode))
        return cannotWrite(path, S_ISDIR(old.st_mode) ? EISDIR : EINVAL);
    const bool asBefore = exists && rules.asBefore;
    if (asBefore && ::faccessat(AT_FDCWD, target.constData(), W_OK, AT_EACCESS) != 0)
        return cannotWrite(path, errno);

    NewFile made(target);
    if (!made.file().isOpen())
        return cannotWrite(path, errno);
    struct stat fresh {
    };
    if (::fstat(made.file().get(), &fresh) != 0)
        return cannotWrite(path, errno);
    if (asBefore && (fresh.st_uid != old.st_uid || fresh.st_gid != old.st_gid)
        && ::fchown(made.file().get(), old.st_uid, old.st_gid) != 0)
        return failure(ErrorKind::Unavailable,
                       reason(QStringLiteral("cannot keep the owner of"), path, errno));
    if (::fchmod(made.file().get(), asBefore ? old.st_mode & 07777U : rules.mode) != 0)
        return cannotWrite(path, errno);
    if (const int error = made.fill(bytes); error != 0)
        return cannotWrite(path, error);
    const Descriptor turn(rules.lastLook ? takeTurn(target) : -1);
    if (rules.lastLook && !rules.lastLook())
        return changed();
    if (const int error = made.takeName(rules.onlyNew); error != 0)
        return rules.onlyNew && error == EEXIST ? Result<void>(changed()) : cannotWrite(path, error);
    return {};
}

} // namespace Vesk
