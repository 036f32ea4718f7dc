#include "core/AppPaths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <filesystem>
#include <system_error>
#include <vector>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace fs = std::filesystem;

namespace
{

constexpr auto folderName = "vesk"_L1;
constexpr auto olderFolderName = "orvane"_L1;
constexpr auto secretsName = "secrets.env"_L1;

fs::path nativePath(const QString &path)
{
    return fs::path(QFile::encodeName(path).toStdString());
}

/** Copies one entry that is no folder. Sockets and pipes hold nothing to copy. */
std::error_code copyLeaf(const fs::directory_entry &from, const fs::path &to)
{
    std::error_code error;
    const fs::file_type type = from.symlink_status(error).type();
    if (error)
        return error;
    if (type == fs::file_type::symlink)
        fs::copy_symlink(from.path(), to, error);
    else if (type == fs::file_type::regular)
        fs::copy_file(from.path(), to, error); // with its permission bits
    return error;
}

/** Copies what `from` holds into the existing folder `to`, permission bits included. */
std::error_code copyFolder(const fs::path &from, const fs::path &to)
{
    struct FolderPair {
        fs::path from, to;
    };
    std::error_code error;
    std::vector<FolderPair> folders {{from, to}};
    // Indexed: the list grows while it is gone through.
    for (std::size_t i = 0; i < folders.size() && !error; ++i) {
        const FolderPair folder = folders[i];
        for (fs::directory_iterator entry(folder.from, error), end; !error && entry != end;
             entry.increment(error)) {
            const fs::path target = folder.to / entry->path().filename();
            if (entry->symlink_status(error).type() == fs::file_type::directory) {
                fs::create_directory(target, error);
                folders.push_back({entry->path(), target});
            } else if (!error) {
                error = copyLeaf(*entry, target);
            }
            if (error)
                break;
        }
    }
    // Innermost first, at the end: a folder without write permission could not have been filled.
    for (auto folder = folders.crbegin(); folder != folders.crend() && !error; ++folder) {
        const fs::file_status status = fs::status(folder->from, error);
        if (!error)
            fs::permissions(folder->to, status.permissions(), error);
    }
    return error;
}

/** A base folder: the variable when it names an absolute path, as the XDG convention asks, else the default.
 */
QString baseFolder(const QProcessEnvironment &environment, const QString &variable, const QString &fallback)
{
    const QString value = environment.value(variable);
    return QDir::isAbsolutePath(value) ? QDir::cleanPath(value) : fallback;
}

} // namespace

AppPaths AppPaths::fromEnvironment(const QProcessEnvironment &environment, const QString &currentFolder)
{
    const QString home = baseFolder(environment, u"HOME"_s, QDir::homePath());
    AppPaths paths;
    paths.m_dataHome = baseFolder(environment, u"XDG_DATA_HOME"_s, home + "/.local/share"_L1);
    paths.m_configHome = baseFolder(environment, u"XDG_CONFIG_HOME"_s, home + "/.config"_L1);
    paths.m_cacheHome = baseFolder(environment, u"XDG_CACHE_HOME"_s, home + "/.cache"_L1);
    paths.m_currentFolder = currentFolder;
    paths.m_extraSecretsFile = environment.value(u"VESK_SECRETS_FILE"_s);
    return paths;
}

QString AppPaths::appSupportDir() const
{
    const QString folder = m_dataHome + u'/' + folderName;
    if (QFileInfo::exists(folder))
        return folder;
    migrateFromOrvaneIfNeeded(folder, m_dataHome);
    QDir().mkpath(m_dataHome);
    QDir().mkdir(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return folder;
}

QString AppPaths::accountsDir() const
{
    return appSupportDir() + "/accounts"_L1;
}

QString AppPaths::accountConfigDir(const QString &id) const
{
    return accountsDir() + u'/' + id;
}

QString AppPaths::cachesDir() const
{
    return m_cacheHome + u'/' + folderName;
}

QString AppPaths::auditLogFile() const
{
    return appSupportDir() + "/audit.log"_L1;
}

QString AppPaths::projectsFile() const
{
    return appSupportDir() + "/projects.json"_L1;
}

QString AppPaths::schedulesFile() const
{
    return appSupportDir() + "/schedules.json"_L1;
}

QString AppPaths::rateLimitsFile() const
{
    return appSupportDir() + "/rate-limits.json"_L1;
}

QString AppPaths::accountsFile() const
{
    return appSupportDir() + "/accounts.json"_L1;
}

QString AppPaths::secretsFile() const
{
    return appSupportDir() + u'/' + secretsName;
}

QString AppPaths::whitelistFile() const
{
    return appSupportDir() + "/whitelist.json"_L1;
}

QString AppPaths::draftsFile() const
{
    return appSupportDir() + "/drafts.json"_L1;
}

QString AppPaths::preferencesFile() const
{
    return m_configHome + u'/' + folderName + "/preferences.ini"_L1;
}

QString AppPaths::olderPreferencesFile() const
{
    return m_configHome + "/dev.orvane.plist"_L1;
}

QStringList AppPaths::candidateSecretURLs() const
{
    QStringList urls;
    if (!m_extraSecretsFile.isEmpty())
        urls.append(QDir(m_currentFolder).absoluteFilePath(m_extraSecretsFile));
    urls.append(QDir(m_currentFolder).filePath(secretsName));
    urls.append(secretsFile());
    return urls;
}

void AppPaths::migrateFromOrvaneIfNeeded(const QString &newDir, const QString &base)
{
    const QString older = base + u'/' + olderFolderName;
    if (QFileInfo::exists(newDir) || !QFileInfo(older).isDir())
        return;
    // A sibling, so that the finished copy takes its name in one step.
    const QTemporaryDir scratch(base + "/.vesk-migration-XXXXXX"_L1);
    if (!scratch.isValid())
        return;
    const fs::path copy = nativePath(scratch.filePath(u"copy"_s));
    std::error_code error;
    fs::create_directory(copy, error);
    if (!error)
        error = copyFolder(nativePath(older), copy);
    if (!error)
        fs::rename(copy, nativePath(newDir), error);
}

} // namespace Vesk
