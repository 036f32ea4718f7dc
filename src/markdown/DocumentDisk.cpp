#include "base/Files.h"
#include "base/Text.h"
#include "markdown/DocumentDisk_p.h"
#include "markdown/MarkdownFileWriter.h"

#include <QFile>

#include <sys/stat.h>

#include <array>
#include <cerrno>

namespace Vesk
{
namespace
{

constexpr qsizetype maxDocumentBytes = qsizetype(256) * 1024 * 1024;

// Tells a file apart from what it was before.
using FileStamp = std::array<qint64, 7>;

FileStamp stampOf(const QString &path)
{
    struct stat status {
    };
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    return {qint64(status.st_dev),  qint64(status.st_ino), qint64(status.st_size), status.st_mtim.tv_sec,
            status.st_mtim.tv_nsec, status.st_ctim.tv_sec, status.st_ctim.tv_nsec};
}

// What only refuses to be looked at is there: it must not be taken for gone and created anew.
bool isThere(const QString &path)
{
    struct stat status {
    };
    if (::stat(QFile::encodeName(path).constData(), &status) == 0)
        return true;
    return errno != ENOENT && errno != ENOTDIR && errno != ELOOP && errno != ENAMETOOLONG;
}

bool mayWrite(const DiskJob &job, DiskReport &report)
{
    const DiskSight &seen = report.seen;
    if (job.kind == DiskJob::Kind::Look || (seen.exists && !seen.text))
        return false;
    if (job.kind == DiskJob::Kind::ForcedSave)
        return true;
    if (seen.exists && seen.text != job.savedText && seen.text != job.text)
        report.outcome = DiskReport::Outcome::HeldBack;
    return seen.exists && report.outcome != DiskReport::Outcome::HeldBack;
}

} // namespace

DiskSight lookAtDisk(const QString &path)
{
    const auto bytes = readFile(path, maxDocumentBytes);
    if (bytes)
        return {true, Text::fromStrictUtf8(*bytes)};
    return {bytes.error().kind != ErrorKind::NotFound && isThere(path), std::nullopt};
}

DiskReport perform(const DiskJob &job)
{
    using Outcome = DiskReport::Outcome;
    DiskReport report;
    // The write takes a while to reach the disk. When another writer comes in between, look again.
    constexpr int attempts = 3;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const FileStamp before = stampOf(job.path);
        report = {};
        report.seen = lookAtDisk(job.path);
        if (!mayWrite(job, report)) {
            if (job.kind != DiskJob::Kind::Look && !report.seen.text)
                report.characters = Text::characterCount(job.text);
            return report;
        }
        const auto target = MarkdownFileWriter::target(job.path);
        if (!target.resolved) {
            report.outcome = Outcome::Unresolved;
            report.hops = target.hops;
            report.characters = Text::characterCount(job.text);
            return report;
        }
        report.links = MarkdownFileWriter::hardLinkCount(target.path);
        const QByteArray bytes = job.text.toUtf8();
        bool unchanged = true;
        const auto lastLook = [&] {
            return unchanged = job.kind == DiskJob::Kind::ForcedSave || stampOf(job.path) == before;
        };
        const auto written = MarkdownFileWriter::write(target.path, bytes, lastLook);
        if (written) {
            report.outcome = Outcome::Written;
            report.written =
                job.text.isValidUtf16() ? job.text : Text::fromStrictUtf8(bytes).value_or(job.text);
            return report;
        }
        report.outcome = Outcome::Failed;
        report.error = written.error().text;
        if (unchanged)
            return report;
    }
    return report;
}

} // namespace Vesk
