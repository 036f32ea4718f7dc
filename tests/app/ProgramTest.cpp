// The program itself, as processes: signals, a second start, bad files.
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

namespace
{

/** A home of its own for one or two starts of the program. */
class Home
{
public:
    Home()
    {
        QDir().mkpath(support());
        environment.insert(QStringLiteral("HOME"), m_folder.path());
        environment.insert(QStringLiteral("XDG_DATA_HOME"), m_folder.filePath(QStringLiteral("data")));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.filePath(QStringLiteral("config")));
        environment.insert(QStringLiteral("XDG_CACHE_HOME"), m_folder.filePath(QStringLiteral("cache")));
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
        QDir().mkpath(m_folder.filePath(QStringLiteral(".local/bin")));
        QFile::link(QStringLiteral(VESK_SCRIPTED_AGENT),
                    m_folder.filePath(QStringLiteral(".local/bin/claude")));
    }
    [[nodiscard]] QString support() const { return m_folder.filePath(QStringLiteral("data/vesk")); }
    void write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(support() + u'/' + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    [[nodiscard]] QByteArray auditLog() const
    {
        QFile file(support() + QStringLiteral("/audit.log"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void start(QProcess &process) const
    {
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(VESK_PROGRAM), QStringList());
    }

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();

private:
    QTemporaryDir m_folder;
};

constexpr int limitMs = 60'000;

} // namespace

class ProgramTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSignalEndsItLikeQuit_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGINT") << SIGINT;
    }
    void aSignalEndsItLikeQuit()
    {
        QFETCH(int, signal);
        const Home home;
        QProcess vesk;
        home.start(vesk);
        QTRY_VERIFY_WITH_TIMEOUT(home.auditLog().contains("info\tstarted (in-app only)\n"), limitMs);
        ::kill(static_cast<pid_t>(vesk.processId()), signal);
        QVERIFY(vesk.waitForFinished(limitMs));
        QCOMPARE(vesk.exitStatus(), QProcess::NormalExit);
        QCOMPARE(vesk.exitCode(), 0);
        QCOMPARE(QFile(home.support() + QStringLiteral("/audit.log")).permissions()
                     & (QFile::ReadGroup | QFile::ReadOther),
                 QFile::Permissions());
    }

    void aSecondStartLeavesTheFirstAlone()
    {
        const Home home;
        QProcess first;
        QProcess second;
        home.start(first);
        QTRY_VERIFY_WITH_TIMEOUT(home.auditLog().contains("started"), limitMs);
        home.start(second);
        QVERIFY(second.waitForFinished(limitMs));
        QCOMPARE(second.exitCode(), 0);
        QVERIFY(second.readAllStandardError().contains("already running"));
        QCOMPARE(first.state(), QProcess::Running);
        QCOMPARE(home.auditLog().count("started (in-app only)"), 1);
        first.terminate();
        QVERIFY(first.waitForFinished(limitMs));
    }

    void aKilledFirstDoesNotBlockTheNext()
    {
        const Home home;
        QProcess first;
        QProcess second;
        home.start(first);
        QTRY_VERIFY_WITH_TIMEOUT(home.auditLog().contains("started"), limitMs);
        first.kill();
        QVERIFY(first.waitForFinished(limitMs));
        home.start(second);
        QTRY_COMPARE_WITH_TIMEOUT(home.auditLog().count("started (in-app only)"), 2, limitMs);
        second.terminate();
        QVERIFY(second.waitForFinished(limitMs));
    }

    void badFilesDoNotKeepItFromStarting_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("logged");
        QTest::newRow("catalog") << QStringLiteral("projects.json") << QByteArray("\xff\xfe[")
                                 << QByteArray("systemError\tSYS ERR start failed: ");
        QTest::newRow("secrets") << QStringLiteral("secrets.env") << QByteArray("\0\xff=\n", 4)
                                 << QByteArray("started (in-app only)");
    }
    void badFilesDoNotKeepItFromStarting()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, logged);
        const Home home;
        home.write(name, bytes);
        QProcess vesk;
        home.start(vesk);
        QTRY_VERIFY_WITH_TIMEOUT(home.auditLog().contains(logged), limitMs);
        vesk.terminate();
        QVERIFY(vesk.waitForFinished(limitMs));
        QCOMPARE(vesk.exitCode(), 0);
        QFile file(home.support() + u'/' + name);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), bytes);
    }
};

VESK_TEST(ProgramTest)

#include "ProgramTest.moc"
