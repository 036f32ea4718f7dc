#include "issues/IssueFolder.h"

#include <QDir>
#include <QFile>

#include <filesystem>
#include <system_error>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr auto boardName = "board.md"_L1;
constexpr auto readmeName = "readme.md"_L1;

bool isNamed(const QString &name, QLatin1StringView wanted)
{
    return name.compare(wanted, Qt::CaseInsensitive) == 0;
}

bool isCandidate(const QString &name)
{
    return !name.startsWith(u'.') && name.endsWith(".md"_L1, Qt::CaseInsensitive);
}

} // namespace

Result<IssueFolder::Listing> IssueFolder::list(const QString &folder)
{
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::path place(QFile::encodeName(folder).toStdString());
    if (!fs::is_directory(place, error)) {
        return failure(ErrorKind::NotFound, folder + u" is no folder"_s);
    }
    QStringList names;
    fs::directory_iterator entry(place, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        QString name = QFile::decodeName(QByteArray::fromStdString(entry->path().filename().string()));
        std::error_code unknown;
        if (isCandidate(name) && !entry->is_directory(unknown)) {
            names.append(std::move(name));
        }
    }
    if (error) {
        return failure(ErrorKind::Unreadable, folder + u": "_s + QString::fromStdString(error.message()));
    }
    names.sort();

    Listing listing;
    for (const QString &name : std::as_const(names)) {
        const QString path = folder + u'/' + name;
        if (isNamed(name, boardName)) {
            if (listing.board.isEmpty()) {
                listing.board = path;
            }
        } else if (isNamed(name, readmeName)) {
            if (listing.readme.isEmpty()) {
                listing.readme = path;
            }
        } else {
            listing.issues.append(path);
        }
    }
    return listing;
}

bool IssueFolder::isIssuePath(const QString &path, const QString &folder)
{
    const QString standard = QDir::cleanPath(path);
    const qsizetype slash = standard.lastIndexOf(u'/');
    const QString name = standard.sliced(slash + 1);
    return !folder.isEmpty() && slash >= 0 && QDir::cleanPath(folder) == standard.first(qMax(slash, 1))
        && isCandidate(name) && !isNamed(name, boardName) && !isNamed(name, readmeName);
}

} // namespace Vesk
