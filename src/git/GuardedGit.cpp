#include "git/GuardedGit.h"

#include "base/Files.h"
#include "git/GitIndex.h"
#include "git/GitPath.h"

#include <QFile>

#include <sys/stat.h>

namespace Vesk
{
namespace
{

constexpr qint64 maxListingBytes = qint64 {64} * 1024 * 1024;
constexpr qsizetype maxIndexBytes = qsizetype {256} * 1024 * 1024;
constexpr int maxSubmoduleDepth = 32;

constexpr qsizetype sha1Bytes = 20;
constexpr qsizetype sha256Bytes = 32;

bool isFolder(const QByteArray &path)
{
    struct stat info {
    };
    return ::lstat(path.constData(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool exists(const QByteArray &path)
{
    struct stat info {
    };
    return ::lstat(path.constData(), &info) == 0;
}

/** Reads the configuration of a repository and of those below it. */
class Survey
{
public:
    explicit Survey(const GitSetting &setting)
        : m_setting(setting)
    {
    }

    [[nodiscard]] Result<void> visit(const QByteArray &folder, int depth = 0)
    {
        const auto listing =
            call({QStringLiteral("config"), QStringLiteral("--list"), QStringLiteral("--show-scope"),
                  QStringLiteral("--show-origin"), QStringLiteral("-z")},
                 folder);
        if (listing.code != 0 || listing.totalOutputBytes > listing.out.size())
            return failure(ErrorKind::Unreadable,
                           GitProcess::failureText(listing.err, QStringLiteral("config"), listing.code));
        const auto settings = GitEnvironment::parseListing(listing.out);
        m_settings += settings;
        if (depth == maxSubmoduleDepth)
            return failure(ErrorKind::TooLarge, GitPath::shown(GitPath::decode(folder)));

        const auto submodules = submodulesOf(folder, settings);
        if (!submodules)
            return tl::unexpected(submodules.error());
        for (const QByteArray &submodule : *submodules) {
            const QByteArray inside = folder + '/' + submodule;
            // git enters only what is checked out, and through no link
            if (!isFolder(inside) || !exists(inside + "/.git"))
                continue;
            // One whose settings are not to be read is none that git could enter.
            if (const auto result = visit(inside, depth + 1);
                !result && result.error().kind == ErrorKind::TooLarge)
                return result;
        }
        return {};
    }

    [[nodiscard]] const QList<GitEnvironment::ListedSetting> &settings() const { return m_settings; }

private:
    [[nodiscard]] GitProcess::CappedOutput call(const QStringList &arguments, const QByteArray &folder) const
    {
        return GitProcess::runCapped(m_setting.call(arguments, GitPath::decode(folder)), maxListingBytes);
    }

    [[nodiscard]] Result<QByteArrayList>
    submodulesOf(const QByteArray &folder, const QList<GitEnvironment::ListedSetting> &settings) const
    {
        qsizetype hashBytes = sha1Bytes;
        bool isPlain = false; // its data lie where git itself says they do: in .git
        for (const auto &setting : settings) {
            isPlain |= setting.isOfRepository() && setting.origin == "file:.git/config";
            if (setting.key == "extensions.objectformat" && setting.value == "sha256")
                hashBytes = sha256Bytes;
        }
        QByteArray path = folder + "/.git/index";
        if (!isPlain) {
            const auto asked = call(
                {QStringLiteral("rev-parse"), QStringLiteral("--git-path"), QStringLiteral("index")}, folder);
            path = withoutLineEnd(asked.out);
            if (!path.startsWith('/'))
                path = folder + '/' + path;
        }

        if (path.isValidUtf8()) { // or it could not be opened by its name, and git has to be asked
            const auto index = readFile(QFile::decodeName(path), maxIndexBytes);
            if (!index && index.error().kind == ErrorKind::NotFound)
                return QByteArrayList();
            if (auto found = index ? GitIndex::submodules(*index, hashBytes) : std::nullopt)
                return *std::move(found);
        }
        const auto listed =
            call({QStringLiteral("ls-files"), QStringLiteral("-s"), QStringLiteral("-z")}, folder);
        if (listed.totalOutputBytes > listed.out.size())
            return failure(ErrorKind::TooLarge, GitPath::shown(GitPath::decode(path)));
        return GitIndex::submodulesOfListing(listed.out);
    }

    const GitSetting &m_setting;
    QList<GitEnvironment::ListedSetting> m_settings;
};

GitSetting forReading(const GitSetting &setting, const QList<GitEnvironment::Setting> &closed)
{
    GitSetting guarded = setting;
    guarded.environment = GitEnvironment::forReading(setting.environment, closed);
    return guarded;
}

} // namespace

Result<GuardedGit> GuardedGit::open(const GitSetting &setting, const QString &root)
{
    if (setting.git.isEmpty())
        return failure(ErrorKind::Unavailable, GitProcess::notFoundMessage());
    const GitSetting cautious = forReading(setting, {});
    Survey survey(cautious);
    if (const auto result = survey.visit(GitPath::encode(root)); !result)
        return tl::unexpected(result.error());
    return GuardedGit(forReading(setting, GitEnvironment::closedRoads(survey.settings())), root);
}

GuardedGit GuardedGit::unprepared(const GitSetting &setting, const QString &folder)
{
    return {forReading(setting, {}), folder};
}

GitProcess::Output GuardedGit::run(const QStringList &arguments) const
{
    return GitProcess::run(m_setting.call(arguments, m_root));
}

GitProcess::CappedOutput GuardedGit::runCapped(const QStringList &arguments, qint64 maxOutputBytes) const
{
    return GitProcess::runCapped(m_setting.call(arguments, m_root), maxOutputBytes);
}

QByteArray withoutLineEnd(QByteArray bytes)
{
    if (bytes.endsWith('\n'))
        bytes.chop(1);
    return bytes;
}

} // namespace Vesk
