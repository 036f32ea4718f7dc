#include "claude/TranscriptFolders.h"

#include <QDir>
#include <QFileInfo>

namespace Vesk::TranscriptFolders
{

namespace
{

constexpr qsizetype maxNameUnits = 200;
constexpr qsizetype hashUnits = 6;

QString withoutSigns(QString path)
{
    for (QChar &unit : path) {
        const bool isPlain = unit.unicode() < 0x80 && unit.isLetterOrNumber();
        if (!isPlain)
            unit = u'-';
    }
    return path;
}

// The name, or those on the disk that are its beginning and any hash.
QStringList currentNames(const QString &root, const QString &path)
{
    const QString name = currentName(path);
    if (path.size() <= maxNameUnits)
        return {name};
    const QString any(hashUnits, u'?');
    return QDir(root).entryList({name + u'-' + any}, QDir::Dirs | QDir::Hidden | QDir::CaseSensitive);
}

} // namespace

QString root(const QString &home)
{
    return home + QStringLiteral("/.claude/projects");
}

QString encodedName(const QString &projectPath)
{
    QString name = projectPath;
    return name.replace(u'/', u'-').replace(u'.', u'-');
}

QString currentName(const QString &projectPath)
{
    return withoutSigns(projectPath).left(maxNameUnits);
}

QStringList existing(const QString &root, const QString &projectPath)
{
    QStringList paths {projectPath};
    const QString real = QFileInfo(projectPath).canonicalFilePath();
    if (!real.isEmpty() && real != projectPath)
        paths << real;
    QStringList names;
    for (const QString &path : std::as_const(paths))
        names << encodedName(path) << currentNames(root, path);
    // A folder may be there under two names by a link.
    QStringList folders, known;
    for (const QString &name : std::as_const(names)) {
        const QFileInfo folder(root + u'/' + name);
        const QString there = folder.isDir() ? folder.canonicalFilePath() : QString();
        if (!there.isEmpty() && !known.contains(there)) {
            known << there;
            folders << folder.filePath();
        }
    }
    return folders;
}

} // namespace Vesk::TranscriptFolders
