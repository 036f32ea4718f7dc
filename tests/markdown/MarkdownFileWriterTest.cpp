#include "markdown/MarkdownFileWriter.h"

#include "base/Files.h"
#include "markdown/InPlaceWrite.h"
#include "markdown/MarkdownEvacuation.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <rapidcheck.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

struct stat statusOf(const QString &path)
{
    struct stat status {
    };
    ::lstat(QFile::encodeName(path).constData(), &status);
    return status;
}

void linkNames(const QString &from, const QString &to)
{
    QCOMPARE(::link(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()), 0);
}

} // namespace

class MarkdownFileWriterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_file = at(u"글.md"_s);
        QVERIFY(writeAtomically(m_file, "old"));
    }

    void followsLinks()
    {
        QVERIFY(QDir(m_dir->path()).mkpath(u"a/b"_s));
        QVERIFY(QFile::link(u"a/b"_s, at(u"short"_s)));
        QVERIFY(QFile::link(u"../none.md"_s, at(u"a/b/up"_s)));
        QVERIFY(QFile::link(at(u"loop2"_s), at(u"loop1"_s)));
        QVERIFY(QFile::link(at(u"loop1"_s), at(u"loop2"_s)));
        QString last = m_file;
        for (int i = 1; i <= 9; ++i) {
            QVERIFY(QFile::link(last, at(u"hop%1"_s.arg(i))));
            last = at(u"hop%1"_s.arg(i));
        }
        const auto leadsTo = [](const QString &path, const QString &end) {
            const auto target = MarkdownFileWriter::target(path);
            return target.resolved && target.path == end;
        };
        QVERIFY(leadsTo(m_file, m_file));
        QVERIFY(leadsTo(at(u"short/up"_s), at(u"a/none.md"_s))); // ".." is that of the folder behind the link
        QVERIFY(leadsTo(at(u"short/new/글"_s), at(u"a/b/new/글"_s)));
        QVERIFY(leadsTo(at(u"hop8"_s), m_file));
        QCOMPARE(MarkdownFileWriter::target(at(u"hop9"_s)).hops, 8);
        QVERIFY(!MarkdownFileWriter::target(at(u"loop1"_s)).resolved);
    }

    void keepsWhatTheFileIs()
    {
        if (::geteuid() == 0)
            QCOMPARE(::chown(QFile::encodeName(m_file).constData(), 12345, 23456), 0);
        QCOMPARE(::chmod(QFile::encodeName(m_file).constData(), 0640), 0);
        const auto before = statusOf(m_file);
        QVERIFY(MarkdownFileWriter::write(m_file, "new"));
        auto after = statusOf(m_file);
        QVERIFY(after.st_mode == before.st_mode && after.st_uid == before.st_uid
                && after.st_gid == before.st_gid);
        QVERIFY(after.st_ino != before.st_ino);

        const QString other = at(u"other.md"_s);
        linkNames(m_file, other);
        QCOMPARE(MarkdownFileWriter::hardLinkCount(m_file), 2U);
        QCOMPARE(MarkdownFileWriter::hardLinkCount(at(u"none"_s)), 1U);
        QVERIFY(MarkdownFileWriter::write(m_file, "new and longer"));
        QCOMPARE(content(other), "new and longer");
        QCOMPARE(statusOf(m_file).st_ino, after.st_ino);

        for (const QString &path : {m_file, at(u"alone.md"_s)}) { // somebody writes at the last moment
            QVERIFY(path == m_file || writeAtomically(path, "theirs"));
            const auto kept = content(path);
            QCOMPARE(MarkdownFileWriter::write(path, "x", [] { return false; }).error().kind,
                     ErrorKind::Unavailable);
            QCOMPARE(content(path), kept);
        }
        QCOMPARE(names(), (QStringList {u"alone.md"_s, u"other.md"_s, u"글.md"_s}));
    }

    void whatMayNotBeWrittenStays()
    {
        if (::geteuid() != 0)
            QSKIP("needs another user to be");
        QCOMPARE(::chmod(QFile::encodeName(m_dir->path()).constData(), 0777), 0);
        const QString foreign = at(u"foreign.md"_s);
        QVERIFY(writeAtomically(foreign, "old", 0666));
        const auto inode = statusOf(foreign).st_ino;
        QCOMPARE(::seteuid(65534), 0);
        const auto readOnly = MarkdownFileWriter::write(m_file, "new");
        const auto writable = MarkdownFileWriter::write(foreign, "new");
        QCOMPARE(::seteuid(0), 0);
        QVERIFY(!readOnly && content(m_file) == "old");
        QVERIFY(writable && content(foreign) == "new");
        QVERIFY(statusOf(foreign).st_uid == 0 && statusOf(foreign).st_ino == inode); // and not ours now
    }

    void aFullDiskLeavesTheOldContent()
    {
        linkNames(m_file, at(u"other.md"_s));
        QVERIFY(writeAtomically(at(u"alone.md"_s), "old"));
        ::signal(SIGXFSZ, SIG_IGN);
        rlimit before {};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &before), 0);
        const rlimit little {3000, before.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &little), 0);
        const QByteArray much(5000, 'n');
        const auto linked = MarkdownFileWriter::write(m_file, much);
        const auto alone = MarkdownFileWriter::write(at(u"alone.md"_s), much);
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &before), 0);
        QVERIFY(!linked && !alone);
        QCOMPARE(content(m_file), "old");
        QCOMPARE(content(at(u"alone.md"_s)), "old");
        QCOMPARE(names(), (QStringList {u"alone.md"_s, u"other.md"_s, u"글.md"_s}));
    }

    void anInterruptedWriteIsFinishedOrLeft_data()
    {
        using Outcome = InterruptedWrite::Outcome;
        QTest::addColumn<QByteArray>("found");
        QTest::addColumn<Outcome>("outcome");
        QTest::newRow("not begun") << QByteArray("before it") << Outcome::Finished;
        QTest::newRow("half") << QByteArray("afore it") << Outcome::Left; // a letter is missing
        QTest::newRow("one byte") << QByteArray("aefore it") << Outcome::Finished;
        QTest::newRow("not cut off") << QByteArray("after it") << Outcome::None;
        QTest::newRow("length left") << QByteArray("after itt") << Outcome::Finished;
        QTest::newRow("others") << QByteArray("theirs") << Outcome::Left;
        QTest::newRow("emptied") << QByteArray() << Outcome::Left;
    }

    void anInterruptedWriteIsFinishedOrLeft()
    {
        QFETCH(QByteArray, found);
        QFETCH(InterruptedWrite::Outcome, outcome);
        const QString record = inPlaceRecordPath(m_file);
        QVERIFY(writeAtomically(record, "vesk-inplace 1 9 8\nbefore itafter it"));
        QVERIFY(writeAtomically(m_file, found));
        const auto interrupted = finishInterruptedWrite(m_file);
        QCOMPARE(interrupted.outcome, outcome);
        const bool left = outcome == InterruptedWrite::Outcome::Left;
        QCOMPARE(content(m_file), left ? found : QByteArray("after it"));
        QCOMPARE(QFile::exists(record), left);
        QCOMPARE(interrupted.unwritten, left ? QByteArray("after it") : QByteArray());
    }

    void whateverIsCutShortIsRecognised()
    {
        QVERIFY(
            rc::check("a write cut short anywhere", [](const std::string &before, const std::string &after) {
                const auto size = *rc::gen::inRange<std::size_t>(0, after.size() + 1);
                std::string found = before;
                found.replace(0, std::min(size, before.size()), after, 0, size);
                RC_ASSERT(isCutShort(QByteArray::fromStdString(found), QByteArray::fromStdString(before),
                                     QByteArray::fromStdString(after)));
            }));
    }

    void copiesFindAName()
    {
        QCOMPARE(pathFingerprint(QString()), u"cbf29ce4"_s);
        QCOMPARE(pathFingerprint(u"a"_s), u"af63dc4c"_s);
        QMap<QString, EvacuationCandidate> there;
        const auto slot = [&there](const QString &path, const QString &under) {
            return evacuationURL(path, under, "body", [&there](const QString &name) {
                const auto found = there.constFind(name);
                return found == there.cend() ? std::nullopt : std::optional(*found);
            });
        };
        const auto stem = [](const QString &start, const QString &path) {
            return start + u"--"_s + pathFingerprint(path);
        };
        const QString path = u"/가/b/c.md"_s;
        const QString name = stem(u"/가/b-c.md"_s, path);
        using Kind = EvacuationSlot::Kind;
        QCOMPARE(slot(path, u"/가"_s), (EvacuationSlot {Kind::Use, name + u".unsaved"_s}));
        QCOMPARE(slot(path, u"/"_s).path, stem(u"/가-b-c.md"_s, path) + u".unsaved"_s);
        QCOMPARE(slot(path, u"/x"_s).path, stem(u"/x/c.md"_s, path) + u".unsaved"_s);

        there.insert(name + u".unsaved"_s, {"other"});
        there.insert(name + u"-2.unsaved"_s, {});
        QCOMPARE(slot(path, u"/가"_s), (EvacuationSlot {Kind::Use, name + u"-3.unsaved"_s}));
        there.insert(name + u"-3.unsaved"_s, {"body"});
        QCOMPARE(slot(path, u"/가"_s), (EvacuationSlot {Kind::AlreadySaved, name + u"-3.unsaved"_s}));
        for (int n = 3; n <= 50; ++n)
            there.insert(name + u"-%1.unsaved"_s.arg(n), {});
        QCOMPARE(slot(path, u"/가"_s).kind, Kind::Exhausted);

        const QString longest = u"/가/"_s + QString(84, u'한') + u".md"_s;
        const QString copy = slot(longest, u"/가"_s).path;
        QVERIFY(copy.mid(3).toUtf8().size() <= 255 && copy.contains(u"한.md--"_s + pathFingerprint(longest)));
    }

private:
    [[nodiscard]] QString at(const QString &name) const { return m_dir->filePath(name); }
    [[nodiscard]] static QByteArray content(const QString &path)
    {
        return readFile(path, 100'000).value_or("?");
    }
    [[nodiscard]] QStringList names() const
    {
        return QDir(m_dir->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_file;
};

VESK_TEST(MarkdownFileWriterTest)
#include "MarkdownFileWriterTest.moc"
