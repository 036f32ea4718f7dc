#include "markdown/DocumentFolders.h"

#include <QFile>

#include <sys/stat.h>

#include <algorithm>

namespace Vesk
{

QString folderOf(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash == 0 ? QStringLiteral("/") : path.first(std::max<qsizetype>(slash, 0));
}

std::optional<QString> nearestExistingAncestor(const QString &path)
{
    QString folder = folderOf(path);
    for (;;) {
        struct stat status {
        };
        if (folder.isEmpty())
            return std::nullopt;
        if (::stat(QFile::encodeName(folder).constData(), &status) == 0 && S_ISDIR(status.st_mode))
            return folder;
        QString parent = folderOf(folder);
        if (parent == folder)
            return std::nullopt;
        folder = std::move(parent);
    }
}

std::optional<quint64> inodeOf(const QString &path)
{
    struct stat status {
    };
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return std::nullopt;
    return status.st_ino;
}

int levelsBetween(const QString &folder, const QString &below)
{
    int levels = 0;
    for (QString at = below; at != folder && at != folderOf(at); at = folderOf(at))
        ++levels;
    return levels;
}

} // namespace Vesk
