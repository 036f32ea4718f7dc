#include "core/AuditLogger.h"

#include "core/AuditWatch.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

/** What the next system calls do; function pointers carry no state of their own. */
struct Script {
    std::vector<ssize_t> writes; // bytes to take, or -errno; then the system's own call
    bool firstSizeFails = false;
    bool secondSizeFails = false;
    bool cutFails = false;
    QByteArray interloper; // appended by "another writer" once a write has failed
    int sizeCalls = 0;
};
Script script;

AuditFileOperations scriptedOperations()
{
    AuditFileOperations operations = AuditFileOperations::system();
    operations.write = [](int fd, const void *bytes, size_t count) -> ssize_t {
        if (script.writes.empty())
            return ::write(fd, bytes, count);
        const ssize_t step = script.writes.front();
        script.writes.erase(script.writes.begin());
        if (step >= 0)
            return step == 0 ? 0 : ::write(fd, bytes, std::min(count, static_cast<size_t>(step)));
        if (!script.interloper.isEmpty())
            (void)!::write(fd, script.interloper.constData(), static_cast<size_t>(script.interloper.size()));
        errno = static_cast<int>(-step);
        return -1;
    };
    operations.fstat = [](int fd, struct stat *status) {
        ++script.sizeCalls;
        if ((script.sizeCalls == 1 && script.firstSizeFails)
            || (script.sizeCalls == 2 && script.secondSizeFails)) {
            errno = EIO;
            return -1;
        }
        return ::fstat(fd, status);
    };
    operations.ftruncate = [](int fd, off_t size) {
        if (script.cutFails) {
            errno = EPERM;
            return -1;
        }
        return ::ftruncate(fd, size);
    };
    return operations;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList summaries(const QList<AuditLogEntry> &entries)
{
    QStringList list;
    for (const AuditLogEntry &entry : entries)
        list.append(entry.summary);
    return list;
}

} // namespace

class AuditLoggerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_path = m_dir->filePath(u"audit.log"_s);
        script = {};
    }

    void everyEventHasItsLine()
    {
        AuditLogger logger(m_path);
        logger.log(AuditEvent::messageReceived(u"C1/1.2"_s, u"U%1"_s, 12));
        logger.log(AuditEvent::messageBlocked(u"C1/1.2"_s, u"not allowed"_s));
        logger.log(AuditEvent::messageInjected(u"C1/1.2"_s, u"t1"_s, true));
        logger.log(AuditEvent::sessionRegistered(u"C1/1.2"_s, u"t1"_s));
        logger.log(AuditEvent::sessionLaunched(u"vesk"_s, u"b1"_s));
        logger.log(AuditEvent::sessionLaunchFailed(u"vesk"_s, u"no folder"_s));
        logger.log(AuditEvent::systemError(u"start failed"_s));
        logger.log(AuditEvent::info(u"시작"_s));
        const QStringList expected {
            u"messageReceived\trecv C1/1.2 from U%1 (12 chars)"_s,
            u"messageBlocked\tBLOCK C1/1.2: not allowed"_s,
            u"messageInjected\tinject C1/1.2 → t1 enter=true"_s,
            u"sessionRegistered\tregister C1/1.2 → t1"_s,
            u"sessionLaunched\tlaunch vesk bootstrap=b1"_s,
            u"sessionLaunchFailed\tlaunch FAIL vesk: no folder"_s,
            u"systemError\tSYS ERR start failed"_s,
            u"info\t시작"_s,
        };
        const QRegularExpression stamp(uR"(^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z\t)"_s);
        QStringList lines = QString::fromUtf8(contentOf(m_path)).split(u'\n');
        QCOMPARE(lines.takeLast(), QString());
        for (QString &line : lines) {
            QVERIFY2(stamp.match(line).hasMatch(), qUtf8Printable(line));
            line.remove(stamp);
        }
        QCOMPARE(lines, expected);
        QCOMPARE(QFile::permissions(m_path) & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup),
                 QFile::Permissions());
    }

    void memoryIsBoundedAndTheFileIsNot()
    {
        AuditLogger logger(m_path);
        for (int i = 0; i <= 500; ++i)
            logger.log(AuditEvent::info(QString::number(i)));
        const auto rows = logger.recent(1000);
        QCOMPARE(rows.size(), 500);
        QCOMPARE(rows.first().summary, u"500"_s);
        QCOMPARE(rows.last().summary, u"1"_s);
        QCOMPARE(contentOf(m_path).count('\n'), 501);
        QVERIFY(logger.recent(0).isEmpty());
        QVERIFY(logger.recent(-3).isEmpty());
    }

    void lossIsCountedAndSaidInTheLog()
    {
        const QString folder = m_dir->filePath(u"gone"_s);
        AuditLogger logger(folder + u"/audit.log"_s);
        for (int i = 1; i <= 3; ++i)
            logger.log(AuditEvent::info(QString::number(i)));
        const QString reason = u"열기 실패: errno 2 No such file or directory"_s;
        QCOMPARE(logger.failureCount(), 3);
        QCOMPARE(logger.lastFailure(), reason);
        QCOMPARE(summaries(logger.recent(10)),
                 (QStringList {u"audit.log에 지금 못 쓰고 있다 — 누적 3건 실패, 마지막 사유: "_s + reason,
                               u"3"_s, u"2"_s,
                               u"audit.log 쓰기 실패(직전 줄부터 파일에 안 남는다): "_s + reason, u"1"_s}));
        QCOMPARE(logger.recent(1).size(), 1);
        QVERIFY(logger.recent(1).first().summary.startsWith(u"audit.log에 지금 못 쓰고 있다"_s));

        QVERIFY(QDir().mkpath(folder));
        logger.log(AuditEvent::info(u"4"_s));
        const QList<QByteArray> lines = contentOf(logger.fileURL()).split('\n');
        QCOMPARE(lines.size(), 3);
        QVERIFY(lines[0].endsWith("\tinfo\t4"));
        QVERIFY(lines[1].endsWith("\tinfo\taudit.log 쓰기 복구 — 직전 구간 3건이 파일에 안 남았다"));
        QCOMPARE(logger.failureCount(), 3);
        QVERIFY(!logger.lastFailure());
    }

    void lostRecoveryLineStaysCounted()
    {
        AuditLogger logger(m_path, AuditLogger::defaultBufferLimit, scriptedOperations());
        script.writes = {-ENOSPC, 1000, -ENOSPC};
        logger.log(AuditEvent::info(u"lost"_s));
        logger.log(AuditEvent::info(u"kept, its recovery line is lost"_s));
        QCOMPARE(logger.failureCount(), 2);
        QVERIFY(logger.lastFailure());
        logger.log(AuditEvent::info(u"kept"_s));
        QVERIFY(contentOf(m_path).endsWith("쓰기 복구 — 직전 구간 2건이 파일에 안 남았다\n"));
    }

    void tornWrites_data()
    {
        QTest::addColumn<QList<int>>("writes");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QByteArray>("added"); // what the file holds behind the earlier line
        QTest::addColumn<QString>("reason");   // empty: success
        const QString full = u"쓰기 실패: errno 28 No space left on device"_s;
        const QByteArray torn(40, 'x');
        QTest::newRow("short and interrupted writes")
            << QList<int> {40, -EINTR, 1} << QString() << QByteArray(100, 'x') << QString();
        QTest::newRow("cut back") << QList<int> {40, -ENOSPC} << QString() << QByteArray() << full;
        QTest::newRow("nothing written") << QList<int> {-ENOSPC} << QString() << QByteArray() << full;
        QTest::newRow("no progress") << QList<int> {40, 0} << QString() << QByteArray()
                                     << u"쓰기 실패: 진전 0바이트(남은 60바이트)"_s;
        QTest::newRow("another line behind it")
            << QList<int> {40, -ENOSPC} << u"interloper"_s << QByteArray(torn + "other\n")
            << QString(full + u" · 찢긴 조각 40바이트를 남겼다(그 뒤에 다른 쓰기가 있어 자르지 않았다)"_s);
        QTest::newRow("size before unknown")
            << QList<int> {40, -ENOSPC} << u"first size"_s << torn
            << QString(full + u" · 찢긴 조각 40바이트를 되돌리지 못했다(쓰기 직전 크기를 못 읽었다)"_s);
        QTest::newRow("size now unknown")
            << QList<int> {40, -ENOSPC} << u"second size"_s << torn
            << QString(
                   full
                   + u" · 찢긴 조각 40바이트를 되돌리지 못했다(현재 크기를 못 읽었다: errno 5 Input/output error)"_s);
        QTest::newRow("cut fails") << QList<int> {40, -ENOSPC} << u"cut"_s << torn
                                   << QString(full
                                              + u" · 찢긴 조각 40바이트를 되돌리지 못했다: errno 1 "
                                                u"Operation not permitted"_s);
    }
    void tornWrites()
    {
        QFETCH(const QList<int>, writes);
        QFETCH(const QString, fault);
        QFETCH(const QByteArray, added);
        QFETCH(const QString, reason);
        const AuditLogFile file(m_path, scriptedOperations());
        QVERIFY(!file.append("earlier\n"));
        script = {};
        script.writes.assign(writes.begin(), writes.end());
        script.firstSizeFails = fault == u"first size"_s;
        script.secondSizeFails = fault == u"second size"_s;
        script.cutFails = fault == u"cut"_s;
        if (fault == u"interloper"_s)
            script.interloper = "other\n";
        QCOMPARE(file.append(QByteArray(100, 'x')).value_or(QString()), reason);
        QCOMPARE(contentOf(m_path), QByteArray("earlier\n" + added));
    }

    void fullDisk()
    {
        if (!QFile::exists(u"/dev/full"_s))
            QSKIP("no /dev/full");
        AuditLogger logger(u"/dev/full"_s);
        logger.log(AuditEvent::info(u"x"_s));
        QCOMPARE(logger.lastFailure(), u"쓰기 실패: errno 28 No space left on device"_s);
    }

    void linesOfSeveralThreadsStayWhole()
    {
        constexpr int threads = 6, perThread = 200;
        AuditLogger logger(m_path);
        std::vector<std::thread> writers;
        for (int t = 0; t < threads; ++t) {
            writers.emplace_back([&logger, t] {
                for (int i = 0; i < perThread; ++i) {
                    logger.log(AuditEvent::info(u"%1:%2:"_s.arg(t).arg(i) + QString(i % 50, u'가') + u'$'));
                    (void)logger.recent(5);
                }
            });
        }
        for (std::thread &writer : writers)
            writer.join();
        QSet<QByteArray> seen;
        const QRegularExpression whole(u"^[^\t]+\tinfo\t(\\d+:\\d+):가*\\$$"_s);
        for (const QByteArray &line : contentOf(m_path).split('\n').mid(0, threads * perThread)) {
            const auto match = whole.match(QString::fromUtf8(line));
            QVERIFY2(match.hasMatch(), line.constData());
            seen.insert(match.captured(1).toUtf8());
        }
        QCOMPARE(seen.size(), threads * perThread);
        QCOMPARE(logger.failureCount(), 0);
    }

    void dismissedWarningReturnsWithTheNextLoss()
    {
        const QString folder = m_dir->filePath(u"gone"_s);
        AuditLogger logger(folder + u"/audit.log"_s);
        AuditWatch watch(logger);
        QSignalSpy changes(&watch, &AuditWatch::auditWriteFailureChanged);
        watch.startAuditWatch(std::chrono::milliseconds(1));
        logger.log(AuditEvent::info(u"1"_s));
        QTRY_VERIFY(watch.auditWriteFailure()); // without anyone asking
        watch.stopAuditWatch();
        QCOMPARE(watch.auditWriteFailure()->count, 1);
        QCOMPARE(changes.count(), 1);
        QVERIFY(watch.auditWriteFailure()->detail().contains(u" — 누적 1건. 원격 차단·주입 기록이"_s));

        watch.dismissAuditWriteFailureBanner();
        watch.refreshAuditWriteFailure();
        QVERIFY(!watch.auditWriteFailure());
        QCOMPARE(changes.count(), 2);

        logger.log(AuditEvent::info(u"2"_s));
        watch.noteBatch();
        QCOMPARE(watch.auditWriteFailure()->count, 2);
        QCOMPARE(watch.recentLogs().size(), 4); // the two, the row that began the run, the row that leads

        watch.dismissAuditWriteFailureBanner();
        QVERIFY(QDir().mkpath(folder));
        logger.log(AuditEvent::info(u"3"_s));
        watch.refreshAuditWriteFailure();
        QVERIFY(!watch.auditWriteFailureDismissedAtCount());
    }

    void observedFailure()
    {
        QVERIFY(!AuditWriteFailure::observed(std::nullopt, 3));
        QVERIFY(!AuditWriteFailure::observed(u" \n"_s, 3));
        QCOMPARE(AuditWriteFailure::observed(u"x"_s, 0)->count, 1);
    }

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_path;
};

VESK_TEST(AuditLoggerTest)

#include "AuditLoggerTest.moc"
