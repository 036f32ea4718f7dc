#include "core/AppPaths.h"

#include "base/Files.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

unsigned modeOf(const QString &path)
{
    struct stat status {
    };
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777U : 0;
}

} // namespace

class AppPathsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_base = m_dir->filePath(u"data"_s);
        m_environment.clear();
        m_environment.insert(u"HOME"_s, m_dir->path());
        m_environment.insert(u"XDG_DATA_HOME"_s, m_base);
    }

    void foldersFollowTheEnvironment()
    {
        m_environment.insert(u"XDG_CONFIG_HOME"_s, u"relative/is/ignored"_s);
        const AppPaths paths = AppPaths::fromEnvironment(m_environment, u"/current"_s);
        QCOMPARE(paths.appSupportDir(), m_base + u"/vesk"_s);
        QCOMPARE(modeOf(m_base + u"/vesk"_s), 0700U);
        QCOMPARE(paths.accountConfigDir(u"a1"_s), m_base + u"/vesk/accounts/a1"_s);
        QCOMPARE(paths.cachesDir(), m_dir->filePath(u".cache/vesk"_s));
        QCOMPARE(paths.preferencesFile(), m_dir->filePath(u".config/vesk/preferences.ini"_s));
        QCOMPARE(paths.olderPreferencesFile(), m_dir->filePath(u".config/dev.orvane.plist"_s));

        QStringList secrets {u"/current/secrets.env"_s, m_base + u"/vesk/secrets.env"_s};
        QCOMPARE(paths.candidateSecretURLs(), secrets);
        m_environment.insert(u"VESK_SECRETS_FILE"_s, QString());
        QCOMPARE(AppPaths::fromEnvironment(m_environment, u"/current"_s).candidateSecretURLs(), secrets);
        m_environment.insert(u"VESK_SECRETS_FILE"_s, u"/etc/extra.env"_s);
        secrets.prepend(u"/etc/extra.env"_s);
        QCOMPARE(AppPaths::fromEnvironment(m_environment, u"/current"_s).candidateSecretURLs(), secrets);
    }

    void olderFolderIsCopiedWhole()
    {
        fillOlder();
        const QString folder = AppPaths::fromEnvironment(m_environment, u"/"_s).appSupportDir();
        QCOMPARE(readFile(folder + u"/secrets.env"_s, 100).value(), QByteArray("A=1\n"));
        QCOMPARE(modeOf(folder + u"/secrets.env"_s), 0600U);
        QCOMPARE(modeOf(folder + u"/accounts/팀"_s), 0500U);
        QCOMPARE(readFile(folder + u"/accounts/팀/run.sh"_s, 100).value(), QByteArray("x"));
        QCOMPARE(modeOf(folder + u"/accounts/팀/run.sh"_s), 0755U);
        QCOMPARE(modeOf(folder), 0750U);
        QCOMPARE(QFile::symLinkTarget(folder + u"/link"_s), u"/nowhere"_s);
        QVERIFY(!QFile::exists(folder + u"/pipe"_s));
        QVERIFY(QFile::exists(m_base + u"/orvane/secrets.env"_s));
        QCOMPARE(entriesOfBase(), (QStringList {u"orvane"_s, u"vesk"_s}));
    }

    void existingFolderIsNeverFilled()
    {
        fillOlder();
        QVERIFY(QDir().mkpath(m_base + u"/vesk"_s));
        const QString folder = AppPaths::fromEnvironment(m_environment, u"/"_s).appSupportDir();
        QVERIFY(QDir(folder).isEmpty());
    }

    void failedCopyLeavesNothing()
    {
        fillOlder();
        // The new name's parent does not exist: everything is copied, and the last step fails.
        const QString target = m_dir->filePath(u"none/vesk"_s);
        AppPaths::migrateFromOrvaneIfNeeded(target, m_base);
        QVERIFY(!QFile::exists(target));
        QCOMPARE(entriesOfBase(), QStringList {u"orvane"_s});
    }

private:
    void fillOlder()
    {
        const QString older = m_base + u"/orvane"_s;
        const QString inner = older + u"/accounts/팀"_s;
        QVERIFY(QDir().mkpath(inner));
        QVERIFY(writeAtomically(older + u"/secrets.env"_s, "A=1\n", 0600));
        QVERIFY(writeAtomically(inner + u"/run.sh"_s, "x", 0755));
        QVERIFY(QFile::link(u"/nowhere"_s, older + u"/link"_s));
        QCOMPARE(::mkfifo(QFile::encodeName(older + u"/pipe"_s).constData(), 0600), 0);
        QCOMPARE(::chmod(QFile::encodeName(inner).constData(), 0500), 0);
        QCOMPARE(::chmod(QFile::encodeName(older).constData(), 0750), 0);
    }

    QStringList entriesOfBase() const
    {
        return QDir(m_base).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_base;
    QProcessEnvironment m_environment;
};

VESK_TEST(AppPathsTest)

#include "AppPathsTest.moc"
