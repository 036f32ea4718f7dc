#include "base/FolderListing.h"

#include <QFile>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string_view>

namespace Vesk
{

namespace
{

constexpr qint64 nsPerSecond = 1'000'000'000;
constexpr qint64 nsPerMs = 1'000'000;

struct CloseFolder {
    void operator()(DIR *folder) const { ::closedir(folder); }
};

} // namespace

QDateTime ListedFile::modified() const
{
    return QDateTime::fromMSecsSinceEpoch(modifiedNs / nsPerMs);
}

Result<QList<ListedFile>> regularFiles(const QString &folder, QLatin1StringView suffix)
{
    const std::unique_ptr<DIR, CloseFolder> open(::opendir(QFile::encodeName(folder).constData()));
    if (!open) {
        const int error = errno;
        return failure(error == ENOENT ? ErrorKind::NotFound : ErrorKind::Unreadable,
                       folder + QStringLiteral(": ") + qt_error_string(error));
    }
    QList<ListedFile> files;
    const std::string_view ending(suffix.data(), static_cast<std::size_t>(suffix.size()));
    while (const dirent *entry = ::readdir(open.get())) {
        const std::string_view name(entry->d_name);
        struct stat status {
        };
        if (name.size() <= ending.size() || !name.ends_with(ending)
            || ::fstatat(::dirfd(open.get()), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0
            || !S_ISREG(status.st_mode))
            continue;
        files.append({.path = folder + u'/' + QFile::decodeName(entry->d_name),
                      .size = status.st_size,
                      .modifiedNs = status.st_mtim.tv_sec * nsPerSecond + status.st_mtim.tv_nsec});
    }
    return files;
}

void sortNewestFirst(QList<ListedFile> &files)
{
    std::sort(files.begin(), files.end(), [](const ListedFile &a, const ListedFile &b) {
        return a.modifiedNs != b.modifiedNs ? a.modifiedNs > b.modifiedNs : a.path < b.path;
    });
}

} // namespace Vesk
