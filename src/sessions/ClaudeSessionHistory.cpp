#include "sessions/ClaudeSessionHistory.h"

#include "claude/TranscriptFolders.h"
#include "claude/TranscriptTitle.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QStandardPaths>

namespace Vesk::ClaudeSessionHistory
{

namespace
{

constexpr QLatin1StringView transcriptSuffix(".jsonl");
constexpr qint64 nsPerMs = 1'000'000;

QString conversationId(const QString &path)
{
    return path.sliced(path.lastIndexOf(u'/') + 1).chopped(transcriptSuffix.size());
}

} // namespace

QString untitled()
{
    return QStringLiteral("(제목 없음)");
}

Listing transcripts(const QString &root, const QString &cwd)
{
    Listing listing;
    for (const QString &folder : TranscriptFolders::existing(root, cwd)) {
        if (const auto files = regularFiles(folder, transcriptSuffix))
            listing.files << *files;
        else if (files.error().kind != ErrorKind::NotFound)
            listing.unreadable << files.error().text;
    }
    sortNewestFirst(listing.files);
    // Of a conversation that lies in two folders, the file that was written last.
    QSet<QString> ids;
    listing.files.removeIf([&](const ListedFile &file) {
        const QString id = conversationId(file.path);
        const bool known = ids.contains(id);
        ids.insert(id);
        return known;
    });
    return listing;
}

std::optional<ListedFile> transcript(const QString &root, const QString &cwd, const QString &id)
{
    std::optional<ListedFile> newest;
    if (id.isEmpty() || id.contains(u'/'))
        return newest;
    for (const QString &folder : TranscriptFolders::existing(root, cwd)) {
        const QFileInfo file(folder + u'/' + id + transcriptSuffix);
        if (file.isSymLink() || !file.isFile())
            continue;
        const qint64 modifiedNs = file.lastModified().toMSecsSinceEpoch() * nsPerMs;
        if (!newest || modifiedNs > newest->modifiedNs)
            newest = {file.filePath(), file.size(), modifiedNs};
    }
    return newest;
}

ResumableSession session(const ListedFile &file, const QString &alias, const QString &cwd,
                         const std::optional<QString> &title)
{
    return {.id = conversationId(file.path),
            .cwd = cwd,
            .alias = alias,
            .title = title.value_or(untitled()),
            .lastModified = file.modified(),
            .path = file.path,
            .size = file.size};
}

QList<ResumableSession> sessions(const QString &root, const QString &alias, const QString &cwd)
{
    QList<ResumableSession> found;
    TitleScan scan;
    for (const ListedFile &file : transcripts(root, cwd).files)
        found.append(session(file, alias, cwd, quickTitle(file.path, scan)));
    return found;
}

bool isDeletableSessionFile(const QString &path, const QString &root)
{
    const QString standard = QDir::cleanPath(path);
    const QFileInfo file(standard);
    // A link counts as one also when it leads nowhere; exists() would follow it.
    if (!standard.endsWith(transcriptSuffix) || file.isSymLink() || !file.isFile())
        return false;
    const QString realRoot = QFileInfo(root).canonicalFilePath();
    return !realRoot.isEmpty() && file.canonicalFilePath().startsWith(realRoot + u'/');
}

std::optional<TrashedFile> moveToTrash(const QString &path, const QString &root)
{
    if (!isDeletableSessionFile(path, root))
        return std::nullopt;
    // Qt makes the Trash of a new account, but not the folder that it stands in.
    QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    TrashedFile file {QDir::cleanPath(path), {}};
    if (!QFile::moveToTrash(file.original, &file.inTrash))
        return std::nullopt;
    return file;
}

TrashReturn takeFromTrash(const TrashedFile &trashed)
{
    if (trashed.inTrash.isEmpty() || !QFileInfo(trashed.inTrash).isFile())
        return TrashReturn::Gone;
    const QFileInfo original(trashed.original);
    if (original.exists() || original.isSymLink())
        return TrashReturn::Occupied;
    QDir().mkpath(original.path());
    QFile file(trashed.inTrash);
    if (!file.rename(trashed.original)) // which replaces nothing, whatever has come there meanwhile
        return TrashReturn::Failed;
    // <trash>/files/NAME has its record in <trash>/info/NAME.trashinfo.
    const QFileInfo there(trashed.inTrash);
    QFile::remove(QDir::cleanPath(there.path() + QStringLiteral("/../info/") + there.fileName()
                                  + QStringLiteral(".trashinfo")));
    return TrashReturn::Returned;
}

} // namespace Vesk::ClaudeSessionHistory
