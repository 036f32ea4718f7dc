#include "base/FileWatch.h"

#include "base/Files.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>

using namespace Vesk;
using namespace Qt::StringLiterals;
using std::chrono::milliseconds;

class FileWatchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_file = m_dir->filePath(u"글.md"_s);
        write("first");
    }

    void tellsOfAFile_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<FileWatch::Means>("means");
        for (const auto means : {FileWatch::Means::Events, FileWatch::Means::Looking})
            for (const char *what :
                 {"write", "truncate", "replace", "rename", "delete", "mode", "second name"})
                QTest::addRow("%s %d", what, int(means)) << QString::fromLatin1(what) << means;
    }

    void tellsOfAFile()
    {
        QFETCH(QString, what);
        QFETCH(FileWatch::Means, means);
        int calls = 0;
        const auto watch = FileWatch::open(
            m_file, FileWatch::Kind::File, [&] { ++calls; }, means, milliseconds(5));
        QVERIFY(watch);
        QCOMPARE((*watch)->means(), means);
        const QByteArray name = QFile::encodeName(m_file);
        if (what == u"write")
            write("other words");
        else if (what == u"truncate")
            QCOMPARE(::truncate(name.constData(), 0), 0);
        else if (what == u"replace")
            QVERIFY(writeAtomically(m_file, "new"));
        else if (what == u"rename")
            QVERIFY(QFile::rename(m_file, m_dir->filePath(u"away"_s)));
        else if (what == u"delete")
            QVERIFY(QFile::remove(m_file));
        else if (what == u"mode")
            QCOMPARE(::chmod(name.constData(), 0600), 0);
        else
            QCOMPARE(::link(name.constData(), (name + "2").constData()), 0);
        QTRY_VERIFY(calls > 0);
    }

    void tellsOfTheEntriesOfAFolder()
    {
        int calls = 0;
        auto watch = FileWatch::open(m_dir->path(), FileWatch::Kind::Folder, [&] { ++calls; });
        QVERIFY(watch);
        const auto isTold = [&](const std::function<void()> &deed) {
            calls = 0;
            deed();
            return QTest::qWaitFor([&] { return calls == 1; }, 60'000);
        };
        QVERIFY(isTold([&] { QDir(m_dir->path()).mkdir(u"unter"_s); }));
        QVERIFY(isTold([&] { QFile::rename(m_file, m_dir->filePath(u"unter/x"_s)); }));
        QVERIFY(isTold([&] {
            // Not of what happens within an entry: the one call is for the last line.
            QFile::remove(m_dir->filePath(u"unter/x"_s));
            QDir(m_dir->path()).rmdir(u"unter"_s);
        }));
        QVERIFY((*watch)->isAlive());
        QVERIFY(isTold([&] { m_dir->remove(); }));
        QVERIFY(!(*watch)->isAlive());
    }

    void watchesShareAFileAndCancelEachOther()
    {
        std::array<tl::expected<std::unique_ptr<FileWatch>, int>, 3> watches;
        int calls = 0;
        for (auto &watch : watches)
            watch = FileWatch::open(m_file, FileWatch::Kind::File, [&] {
                ++calls;
                for (auto &each : watches)
                    each->reset();
            });
        write("x");
        QTRY_COMPARE(calls, 1);
        watches[0] = FileWatch::open(m_file, FileWatch::Kind::File, [&] { ++calls; });
        write("y");
        QTRY_COMPARE(calls, 2);
    }

    void saysWhyItCannot()
    {
        QCOMPARE(FileWatch::open(m_dir->filePath(u"none"_s), FileWatch::Kind::File, [] {}).error(), ENOENT);
    }

private:
    void write(const QByteArray &bytes) const
    {
        QFile file(m_file);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_file;
};

VESK_TEST(FileWatchTest)
#include "FileWatchTest.moc"
