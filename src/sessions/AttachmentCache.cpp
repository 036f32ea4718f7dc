#include "sessions/AttachmentCache.h"

#include "base/Files.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QImageReader>
#include <QLocale>
#include <QMimeData>
#include <QRegularExpression>
#include <QThreadPool>
#include <QUrl>
#include <QUuid>

#include <algorithm>

namespace Vesk::AttachmentCache
{

namespace
{

constexpr auto anyImage = "application/x-qt-image";

QString folderIn(const QString &cachesDir)
{
    return cachesDir + QStringLiteral("/attachments");
}

/** The end of every whole PNG file; some programs write a little behind it. */
bool hasPngEnd(const QByteArray &bytes)
{
    constexpr qsizetype tail = 1024;
    return bytes.last(qMin(bytes.size(), tail)).contains("IEND\xae\x42\x60\x82");
}

// Bytes that are PNG already are kept as they are: only their frame is looked at, however large they are.
Result<QByteArray> pngOf(const PastedImage &pasted)
{
    QImage image = pasted.image ? *pasted.image : QImage();
    if (!pasted.bytes.isEmpty()) {
        QBuffer buffer;
        buffer.setData(pasted.bytes);
        buffer.open(QIODevice::ReadOnly);
        QImageReader reader(&buffer);
        if (reader.format() == "png" && reader.size().isValid() && hasPngEnd(pasted.bytes))
            return pasted.bytes;
        if (reader.format() != "png")
            image = reader.read();
    }
    QByteArray png;
    QBuffer written(&png);
    written.open(QIODevice::WriteOnly);
    if (image.isNull() || !image.save(&written, "PNG"))
        return failure(ErrorKind::Malformed, QStringLiteral("the pasted data is no whole picture"));
    return png;
}

} // namespace

QString directory(const QString &cachesDir)
{
    const QString folder = folderIn(cachesDir);
    QDir().mkpath(cachesDir);
    QDir().mkdir(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return folder;
}

QStringList attachablePaths(const QMimeData &data)
{
    QStringList paths;
    const auto urls = data.urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile() && QFileInfo::exists(url.toLocalFile()))
            paths.append(url.toLocalFile());
    }
    return paths;
}

std::optional<PastedImage> attachableImage(const QMimeData &data)
{
    const QStringList formats = data.formats();
    for (const auto *format : {"image/png", "image/jpeg", "image/webp", "image/gif", "image/bmp"}) {
        if (formats.contains(QLatin1StringView(format))) {
            if (auto bytes = data.data(QLatin1StringView(format)); !bytes.isEmpty())
                return PastedImage {std::move(bytes)};
        }
    }
    if (!data.hasFormat(QLatin1StringView(anyImage)))
        return std::nullopt;
    return PastedImage {{}, std::make_shared<QImage>(data.imageData().value<QImage>())};
}

bool isGivenName(const QString &fileName)
{
    static const QRegularExpression given(QStringLiteral(
        "^(?:attach|pasted)-\\d{8}-\\d{6}-[0-9A-F]{8}(?:-[0-9A-F]{4}){3}-[0-9A-F]{12}\\.png$"));
    return given.match(fileName).hasMatch();
}

Result<QString> savePastedImage(const PastedImage &pasted, const QString &folder, const QDateTime &now,
                                const QString &prefix)
{
    const auto png = pngOf(pasted);
    if (!png)
        return tl::unexpected(png.error());
    const QString when =
        QLocale(QStringLiteral("en_US_POSIX")).toString(now, QStringLiteral("yyyyMMdd-HHmmss"));
    const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    const QString path = QStringLiteral("%1/%2-%3-%4.png").arg(folder, prefix, when, id);
    if (const auto written = writeAtomically(path, *png, 0600); !written)
        return tl::unexpected(written.error());
    return path;
}

QStringList prunePlan(QList<CachedFile> files, const QDateTime &now, std::chrono::seconds age,
                      qint64 totalBytes)
{
    std::ranges::sort(files, {}, [](const CachedFile &file) { return std::pair(file.modified, file.path); });
    qint64 total = 0;
    for (const CachedFile &file : std::as_const(files))
        total += file.size;
    QStringList plan;
    for (const CachedFile &file : std::as_const(files)) {
        if (file.modified.secsTo(now) <= age.count() && total <= totalBytes)
            break;
        plan.append(file.path);
        total -= file.size;
    }
    return plan;
}

void prune(const QString &folder, const QDateTime &now)
{
    QList<CachedFile> files;
    const auto entries =
        QDir(folder).entryInfoList(QDir::Files | QDir::Hidden | QDir::NoSymLinks | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries)
        files.append({entry.filePath(), entry.lastModified(), entry.size()});
    for (const QString &path : prunePlan(std::move(files), now, maxAge, maxTotalBytes))
        QFile::remove(path);
}

void pruneAtLaunch(const QString &cachesDir)
{
    QThreadPool::globalInstance()->start(
        [folder = folderIn(cachesDir)] { prune(folder, QDateTime::currentDateTime()); });
}

} // namespace Vesk::AttachmentCache
