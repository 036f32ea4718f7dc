#include "git/RepositoryFault.h"

#include "base/Files.h"
#include "git/GitPath.h"
#include "git/GuardedGit.h"

#include <QFile>

#include <sys/stat.h>

#include <cstdlib>
#include <memory>

namespace Vesk
{
namespace
{

constexpr qsizetype maxLinkBytes = 64 * 1024;
constexpr qint64 longestHeldSeconds = 60;

std::optional<mode_t> modeOf(const QByteArray &path)
{
    struct stat info {
    };
    return ::stat(path.constData(), &info) == 0 ? std::optional(info.st_mode) : std::nullopt;
}

bool leadsToFolder(const QByteArray &path)
{
    const auto mode = modeOf(path);
    return mode && S_ISDIR(*mode);
}

/** What git itself takes for a repository. */
bool isBareRepository(const QByteArray &folder)
{
    return modeOf(folder + "/HEAD") && leadsToFolder(folder + "/objects") && leadsToFolder(folder + "/refs");
}

/** Where the `.git` file of a linked work tree points to. */
std::optional<QByteArray> linkedRepository(const QByteArray &folder)
{
    const QByteArray link = folder + "/.git";
    const auto mode = modeOf(link);
    const auto text = mode && S_ISREG(*mode) && link.isValidUtf8()
        ? readFile(QFile::decodeName(link), maxLinkBytes)
        : Result<QByteArray>();
    constexpr QByteArrayView mark = "gitdir: ";
    if (!text || !text->startsWith(mark))
        return std::nullopt;
    QByteArray target = withoutLineEnd(text->sliced(mark.size()));
    if (!target.startsWith('/'))
        target = folder + '/' + target;
    return target;
}

} // namespace

Error repositoryFault(const QString &folder, const QString &words)
{
    const std::unique_ptr<char, decltype(&std::free)> real(
        ::realpath(GitPath::encode(folder).constData(), nullptr), &std::free);
    QByteArray at(real.get());
    while (!at.isEmpty()) {
        if (modeOf(at + "/.git")) {
            const auto linked = linkedRepository(at);
            return {ErrorKind::Unreadable,
                    linked && !leadsToFolder(*linked)
                        ? QStringLiteral("이 작업 트리의 원래 저장소가 없습니다: ")
                            + GitPath::shown(GitPath::decode(*linked))
                        : words};
        }
        if (isBareRepository(at))
            return {ErrorKind::Unreadable,
                    QStringLiteral("작업 트리가 없는 저장소(bare)라 여기에서 볼 것이 없습니다")};
        at.truncate(at.lastIndexOf('/'));
    }
    return {ErrorKind::NotFound, words};
}

QString leftBehindLock(const QString &root, qint64 now)
{
    const QByteArray folder = GitPath::encode(root);
    const QByteArray lock = linkedRepository(folder).value_or(folder + "/.git") + "/index.lock";
    struct stat info {
    };
    if (::stat(lock.constData(), &info) != 0 || now - info.st_mtim.tv_sec < longestHeldSeconds)
        return {};
    return GitPath::shown(GitPath::decode(lock));
}

} // namespace Vesk
