#include "markdown/MarkdownFileWriter.h"

#include "base/Files.h"
#include "markdown/InPlaceWrite.h"

#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <filesystem>
#include <optional>

namespace Vesk::MarkdownFileWriter
{
namespace
{

// What the link at `path` points to, as it stands there; absent when it is none.
std::optional<QByteArray> linkDestination(const QByteArray &path)
{
    std::array<char, PATH_MAX> destination {};
    const ssize_t size = ::readlink(path.constData(), destination.data(), destination.size());
    if (size < 0)
        return std::nullopt;
    return QByteArray(destination.data(), size);
}

// With the links in its folders followed, as far as those exist.
QString withoutLinks(const QByteArray &path)
{
    std::error_code error;
    const auto resolved = std::filesystem::weakly_canonical(path.toStdString(), error);
    return QFile::decodeName(error ? path : QByteArray::fromStdString(resolved.string()));
}

} // namespace

Target target(const QString &path)
{
    QByteArray current = QFile::encodeName(path);
    for (int hop = 0; hop < maxHops; ++hop) {
        const auto destination = linkDestination(current);
        if (!destination)
            return {true, withoutLinks(current), 0};
        // Joined, not tidied: ".." behind a linked folder is for the system to follow.
        current = destination->startsWith('/') ? *destination
                                               : current.left(current.lastIndexOf('/') + 1) + *destination;
    }
    if (linkDestination(current))
        return {false, {}, maxHops};
    return {true, withoutLinks(current), 0};
}

QString unresolvedText()
{
    return QStringLiteral("심볼릭 링크가 순환합니다 — 어디에 써야 할지 알 수 없어 쓰지 않았습니다");
}

quint64 hardLinkCount(const QString &path)
{
    struct stat status {
    };
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_nlink : 1;
}

Result<void> write(const QString &resolved, QByteArrayView bytes, const std::function<bool()> &lastLook)
{
    if (hardLinkCount(resolved) >= 2)
        return writeInPlace(resolved, bytes, lastLook);
    bool wanted = true;
    const auto look = [&] { return wanted = !lastLook || lastLook(); };
    auto written = writeAtomically(resolved, bytes, ReplacementRules {.asBefore = true, .lastLook = look});
    if (!written && written.error().kind == ErrorKind::Unavailable && wanted)
        return writeInPlace(resolved, bytes, lastLook); // its owner would change
    return written;
}

} // namespace Vesk::MarkdownFileWriter
