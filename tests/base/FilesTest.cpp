#include "base/Files.h"

#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

mode_t modeOf(const QString &path)
{
    struct stat status {
    };
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777U : 0;
}

} // namespace

class FilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }

    void writesAndReadsBack()
    {
        const QString path = m_dir->filePath(u"설정.json"_s);
        for (const mode_t mode : {0600U, 0644U, 0640U}) {
            const QByteArray bytes(200'000, char('a' + mode % 26));
            QVERIFY(writeAtomically(path, bytes, mode));
            QCOMPARE(modeOf(path), mode);
            QCOMPARE(readFile(path, bytes.size()).value(), bytes);
        }
        QCOMPARE(readFile(path, 199'999).error().kind, ErrorKind::TooLarge);
        QVERIFY(writeAtomically(path, {}, 0600));
        QCOMPARE(readFile(path, 0).value(), QByteArray());
        QCOMPARE(entries(), QStringList {u"설정.json"_s});
    }

    void readingTellsWhy()
    {
        QCOMPARE(readFile(m_dir->filePath(u"none"_s), 10).error().kind, ErrorKind::NotFound);
        QCOMPARE(readFile(m_dir->path(), 10).error().kind, ErrorKind::Unreadable);
        const QString pipe = m_dir->filePath(u"pipe"_s);
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QCOMPARE(readFile(pipe, 10).error().kind, ErrorKind::Unreadable); // and does not wait
        QCOMPARE(readFile(u"/dev/zero"_s, 100'000).error().kind, ErrorKind::TooLarge);
        QVERIFY(readFile(u"/proc/self/status"_s, 100'000)->size() > 100); // its stated size is 0
    }

    void symbolicLinksAreWrittenThrough()
    {
        QVERIFY(QDir(m_dir->path()).mkdir(u"far"_s));
        const QString target = m_dir->filePath(u"far/target"_s);
        const QString link = m_dir->filePath(u"link"_s);
        const QString second = m_dir->filePath(u"second"_s);
        QVERIFY(QFile::link(u"far/target"_s, link)); // relative, and nothing there yet
        QVERIFY(QFile::link(link, second));
        for (const QByteArray bytes : {"one", "two"}) {
            QVERIFY(writeAtomically(second, bytes));
            QCOMPARE(readFile(target, 10).value(), bytes);
        }
        QVERIFY(QFileInfo(link).isSymLink() && QFileInfo(second).isSymLink());
        const QString loop = m_dir->filePath(u"loop"_s);
        QVERIFY(QFile::link(loop, loop));
        QCOMPARE(writeAtomically(loop, "x").error().kind, ErrorKind::Unwritable);
    }

    void aNewFileTakesNoOthersPlace()
    {
        const ReplacementRules rules {.mode = 0640, .onlyNew = true};
        const QString path = m_dir->filePath(u"made"_s);
        QVERIFY(writeAtomically(path, "first", rules));
        QCOMPARE(modeOf(path), 0640U);
        QVERIFY(QFile::link(u"nowhere"_s, m_dir->filePath(u"dangling"_s)));
        for (const QString &taken : {path, m_dir->filePath(u"dangling"_s), m_dir->path()}) {
            QCOMPARE(writeAtomically(taken, "second", rules).error().kind, ErrorKind::Unavailable);
        }
        // Somebody makes it in the very last moment.
        const QString raced = m_dir->filePath(u"raced"_s);
        const auto outcome = writeAtomically(
            raced, "ours",
            {.lastLook = [&raced] { return writeAtomically(raced, "theirs").has_value(); }, .onlyNew = true});
        QCOMPARE(outcome.error().kind, ErrorKind::Unavailable);
        QCOMPARE(readFile(raced, 10).value(), QByteArray("theirs"));
        QCOMPARE(readFile(path, 10).value(), QByteArray("first"));
        QCOMPARE(entries(), (QStringList {u"made"_s, u"raced"_s})); // nothing is left of what failed
    }

    void betweenLookAndRenameNobodyElseHasTheTurn()
    {
        const QString path = m_dir->filePath(u"shared"_s);
        QVERIFY(writeAtomically(path, "old"));
        const auto isFree = [&path] {
            QFile other(path);
            return other.open(QIODevice::ReadOnly) && ::flock(other.handle(), LOCK_EX | LOCK_NB) == 0;
        };
        bool wasFree = true;
        const auto look = [&] {
            wasFree = isFree();
            return true;
        };
        QVERIFY(writeAtomically(path, "new", {.lastLook = look}));
        QVERIFY(!wasFree);
        QVERIFY(isFree());
        QCOMPARE(readFile(path, 10).value(), QByteArray("new"));
    }

    void failedWritesChangeNothing()
    {
        const QString path = m_dir->filePath(u"kept"_s);
        QVERIFY(writeAtomically(path, "old"));
        const auto fails = [](const QString &where) {
            const auto outcome = writeAtomically(where, "x");
            return !outcome && outcome.error().kind == ErrorKind::Unwritable
                && outcome.error().text.contains(where);
        };
        QVERIFY(fails(path + u"/below-a-file"_s));
        QVERIFY(fails(m_dir->filePath(u"no/such/folder"_s)));
        QVERIFY(fails(m_dir->path()));
        QVERIFY(fails(u"/dev/full"_s));
        QVERIFY(fails(QString()));

        // The disk takes no more in the middle of a write.
        ::signal(SIGXFSZ, SIG_IGN);
        rlimit before {};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &before), 0);
        const rlimit little {1000, before.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &little), 0);
        const auto outcome = writeAtomically(path, QByteArray(5000, 'n'));
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &before), 0);
        QVERIFY(!outcome);
        QCOMPARE(readFile(path, 10).value(), QByteArray("old"));
        QCOMPARE(entries(), QStringList {u"kept"_s});
    }

private:
    [[nodiscard]] QStringList entries() const
    {
        return QDir(m_dir->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
};

VESK_TEST(FilesTest)
#include "FilesTest.moc"
