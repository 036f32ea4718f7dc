// Pasted pictures, whole and broken, and what is thrown away.
#include "sessions/AttachmentCache.h"

#include "support/TestRegistry.h"

#include <QDir>
#include <QMimeData>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>
#include <QUrl>

#include <rapidcheck.h>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

QByteArray smallPng()
{
    return QByteArray::fromBase64(
        "iVBORw0KGgoAAAANSUhEUgAAAAIAAAABCAIAAAB7QOjdAAAAD0lEQVR4nGMQUDBwCEgAAAOHAVEweXTmAAAAAElFTkSuQmCC");
}

QByteArray smallBmp()
{
    return QByteArray::fromBase64(
        "Qk0+AAAAAAAAADYAAAAoAAAAAgAAAAEAAAABABgAAAAAAAgAAAATCwAAEwsAAAAAAAAAAAAAECAwQFBgAAA=");
}

constexpr qint64 mebibyte = 1024 * 1024;

} // namespace

class AttachmentCacheTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void filesComeBeforePictures()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath(u"a b.txt"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QMimeData data;
        data.setData(u"image/png"_s, smallPng());
        data.setUrls({QUrl::fromLocalFile(file.fileName()), QUrl::fromLocalFile(folder.filePath(u"gone"_s)),
                      QUrl(u"https://example.org/x.png"_s)});
        QCOMPARE(AttachmentCache::attachablePaths(data), QStringList {file.fileName()});
        QVERIFY(AttachmentCache::attachableImage(data));
        QMimeData text;
        text.setText(u"text"_s);
        QVERIFY(AttachmentCache::attachablePaths(text).isEmpty());
        QVERIFY(!AttachmentCache::attachableImage(text));
    }

    void picturesAreSaved_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("isWhole");
        const QByteArray png = smallPng();
        QTest::newRow("png") << u"image/png"_s << png << true;
        QTest::newRow("bmp") << u"image/bmp"_s << smallBmp() << true;
        QTest::newRow("cut png") << u"image/png"_s << png.chopped(20) << false;
        QTest::newRow("png of another name") << u"image/jpeg"_s << png << true;
        QTest::newRow("no picture") << u"image/png"_s << QByteArray("\x89PNG\r\n\x1a\nnonsense") << false;
        QTest::newRow("nothing") << u"application/x-qt-image"_s << QByteArray() << false;
    }

    void picturesAreSaved()
    {
        QFETCH(const QString, format);
        QFETCH(const QByteArray, bytes);
        QFETCH(const bool, isWhole);
        QMimeData data;
        data.setData(format, bytes);
        const QTemporaryDir caches;
        const auto pasted = AttachmentCache::attachableImage(data);
        QVERIFY(pasted);
        const QDateTime now(QDate(2026, 3, 4), QTime(15, 6, 7));
        const QString folder = AttachmentCache::directory(caches.path());
        const auto saved = AttachmentCache::savePastedImage(*pasted, folder, now, u"pasted"_s);
        QCOMPARE(saved.has_value(), isWhole);
        QCOMPARE(QDir(folder).entryList(QDir::Files | QDir::Hidden).size(), isWhole ? 1 : 0);
        if (!isWhole)
            return;
        static const QRegularExpression name(u"/attachments/pasted-20260304-150607-[0-9A-F-]{36}\\.png$"_s);
        QVERIFY2(name.match(*saved).hasMatch(), qPrintable(*saved));
        QFile file(*saved);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().startsWith("\x89PNG\r\n\x1a\n"));
        QCOMPARE(QFile::permissions(*saved) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
        QVERIFY(!AttachmentCache::savePastedImage(*pasted, caches.filePath(u"nowhere"_s), now));
    }

    void oldFilesGoFirst()
    {
        const QDateTime now(QDate(2026, 3, 4), QTime(12, 0));
        const auto aged = [&now](const QString &path, qint64 seconds, qint64 size) {
            return AttachmentCache::CachedFile {path, now.addSecs(-seconds), size};
        };
        QCOMPARE(
            AttachmentCache::prunePlan({aged(u"new"_s, 5, 100 * mebibyte), aged(u"old"_s, 30, 100 * mebibyte),
                                        aged(u"mid"_s, 20, 100 * mebibyte)},
                                       now, AttachmentCache::maxAge, AttachmentCache::maxTotalBytes),
            QStringList {u"old"_s});
        QCOMPARE(AttachmentCache::prunePlan({aged(u"kept"_s, AttachmentCache::maxAge.count(), 1),
                                             aged(u"over"_s, AttachmentCache::maxAge.count() + 1, 1)},
                                            now, AttachmentCache::maxAge, AttachmentCache::maxTotalBytes),
                 QStringList {u"over"_s});
        QVERIFY(AttachmentCache::prunePlan({aged(u"exact"_s, 1, AttachmentCache::maxTotalBytes)}, now,
                                           AttachmentCache::maxAge, AttachmentCache::maxTotalBytes)
                    .isEmpty());
    }

    void pruningTwiceChangesNothingMore()
    {
        QVERIFY(rc::check([] {
            const QDateTime now(QDate(2026, 3, 4), QTime(12, 0));
            QList<AttachmentCache::CachedFile> files;
            const auto count = *rc::gen::inRange(0, 12);
            for (int i = 0; i < count; ++i)
                files.append(
                    {QString::number(i), now.addSecs(-*rc::gen::inRange(-5, 100)), *rc::gen::inRange(0, 50)});
            const auto plan = AttachmentCache::prunePlan(files, now, std::chrono::seconds(60), 100);
            qint64 left = 0;
            files.removeIf([&](const AttachmentCache::CachedFile &file) { return plan.contains(file.path); });
            for (const auto &file : files) {
                RC_ASSERT(file.modified.secsTo(now) <= 60);
                left += file.size;
            }
            RC_ASSERT(left <= 100);
            RC_ASSERT(AttachmentCache::prunePlan(files, now, std::chrono::seconds(60), 100).isEmpty());
        }));
    }

    void theCacheIsPrunedInItsOwnFolderAlone()
    {
        const QTemporaryDir caches;
        const QString outside = caches.filePath(u"outside.png"_s);
        const QString folder = AttachmentCache::directory(caches.path());
        for (const auto &path : {outside, folder + u"/a.png"_s}) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            QVERIFY(file.setFileTime(QDateTime::currentDateTime().addDays(-8), QFile::FileModificationTime));
        }
        QVERIFY(QFile::link(outside, folder + u"/link.png"_s));
        AttachmentCache::prune(folder, QDateTime::currentDateTime());
        QVERIFY(QFile::exists(outside));
        QVERIFY(!QFile::exists(folder + u"/a.png"_s));
        AttachmentCache::pruneAtLaunch(caches.filePath(u"nowhere"_s));
        QVERIFY(!QFile::exists(caches.filePath(u"nowhere"_s)));
    }
};

VESK_TEST(AttachmentCacheTest)
#include "AttachmentCacheTest.moc"
