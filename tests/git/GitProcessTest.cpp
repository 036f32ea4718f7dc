#include "git/GitProcess.h"

#include "git/GitEnvironment.h"
#include "git/GitPath.h"
#include "git/GitTask.h"
#include "Repository.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QElapsedTimer>
#include <QThread>
#include <QtTest>

#include <rapidcheck.h>
#include <signal.h>
#include <sys/resource.h>

using namespace Vesk;
using namespace Vesk::Test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

GitProcess::Call shell(const QString &script)
{
    return {.program = u"/bin/sh"_s, .arguments = {u"-c"_s, script}, .cwd = QDir::tempPath()};
}

bool isAlive(qint64 pid)
{
    // A child that nobody has fetched yet is dead all the same.
    QFile status(u"/proc/%1/stat"_s.arg(pid));
    return status.open(QIODevice::ReadOnly) && !status.readAll().contains(") Z ");
}

QStringList leftovers()
{
    return QDir(QDir::tempPath()).entryList({u"orvane-git-*"_s});
}

} // namespace

class GitProcessTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QCOMPARE(leftovers(), QStringList()); }

    void endsAsTheChildDoes_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("out");
        QTest::addColumn<QString>("err");
        QTest::newRow("text") << u"echo 안녕; echo no >&2"_s << 0 << u"안녕\n"_s << u"no\n"_s;
        QTest::newRow("code") << u"exit 3"_s << 3 << QString() << QString();
        QTest::newRow("124 by chance") << u"exit 124"_s << 124 << QString() << QString();
        QTest::newRow("signal") << u"kill -KILL $$"_s << 128 + SIGKILL << QString() << QString();
        QTest::newRow("no utf-8") << u"printf 'a\\377b'"_s << 0 << QString() << QString();
    }

    void endsAsTheChildDoes()
    {
        QFETCH(QString, script);
        const auto output = GitProcess::run(shell(script));
        QTEST(output.code, "code");
        QTEST(output.out, "out");
        QTEST(output.err, "err");
    }

    void whatCannotStartSaysWhy()
    {
        auto call = shell(u"true"_s);
        call.program = u"/nowhere/git"_s;
        auto output = GitProcess::run(call);
        QVERIFY(output.code != 0);
        QVERIFY2(output.err.startsWith(u"/nowhere/git: "_s), qPrintable(output.err));
        call = shell(u"true"_s);
        call.cwd = u"/nowhere"_s;
        output = GitProcess::run(call);
        QVERIFY(output.code != 0);
        QVERIFY2(output.err.startsWith(u"/nowhere: "_s), qPrintable(output.err));
    }

    void inputReachesTheChild()
    {
        auto call = shell(u"cat"_s);
        call.input = QByteArray(1'000'000, 'x');
        QCOMPARE(GitProcess::run(call).out.size(), 1'000'000);
        call.arguments = {u"-c"_s, u"exit 0"_s}; // never reads
        QCOMPARE(GitProcess::run(call).code, 0);
    }

    void muchOutputStaysOnTheDisk()
    {
        rusage before {};
        getrusage(RUSAGE_SELF, &before);
        const auto output = GitProcess::runCapped(shell(u"head -c 100000000 /dev/zero"_s), 262'144);
        rusage after {};
        getrusage(RUSAGE_SELF, &after);
        QCOMPARE(output.code, 0);
        QCOMPARE(output.out.size(), 262'144);
        QCOMPARE(output.totalOutputBytes, 100'000'000);
        QVERIFY(after.ru_maxrss - before.ru_maxrss < 20'000); // KiB
    }

    // Whoever the child started must go with it, also when they are deaf to a request.
    void aCallBeyondItsTimeEndsWithAllItStarted()
    {
        auto call =
            shell(u"trap '' TERM; (trap '' TERM; echo $$; exec sleep 3600) & echo $!; wait; sleep 3600"_s);
        call.timeout = 300ms;
        const auto output = GitProcess::run(call);
        QCOMPARE(output.code, GitProcess::timedOutCode);
        for (const QString &pid : output.out.split(u'\n', Qt::SkipEmptyParts))
            QTRY_VERIFY(!isAlive(pid.toLongLong()));
    }

    void aCancelEndsWhatRuns()
    {
        QObject context;
        const QTemporaryDir folder;
        const QString marker = folder.filePath(u"pid"_s);
        bool isDelivered = false;
        GitTask task = startGitTask(
            &context,
            [marker](const GitSetting &setting) {
                auto call = shell(u"echo $$ > '%1.new'; mv '%1.new' '%1'; exec sleep 3600"_s.arg(marker));
                call.cancel = setting.cancel;
                return GitProcess::run(call).code;
            },
            [&](int) { isDelivered = true; });
        QTRY_VERIFY(QFile::exists(marker));
        QFile file(marker);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const qint64 pid = file.readAll().trimmed().toLongLong();
        QVERIFY(isAlive(pid));
        task.cancel();
        QTRY_VERIFY(!isAlive(pid));
        QVERIFY(gitPool()->waitForDone(60'000));
        QCoreApplication::processEvents();
        QVERIFY(!isDelivered);
    }

    void theDeathOfTheContextEndsTheWork()
    {
        auto context = std::make_unique<QObject>();
        startGitTask(
            context.get(),
            [](const GitSetting &setting) {
                auto call = shell(u"exec sleep 3600"_s);
                call.cancel = setting.cancel;
                return GitProcess::run(call).code;
            },
            [](int) { QFAIL("delivered"); });
        context.reset();
        QVERIFY(gitPool()->waitForDone(60'000));
    }

    void theFirstCandidateIsTaken()
    {
        QCOMPARE(GitProcess::resolve(u"git"_s, {u"/nowhere/git"_s, u"/bin/sh"_s}), u"/bin/sh"_s);
        QVERIFY(!GitProcess::resolve(u"no-such-tool-here"_s, {u"/etc"_s}));
    }

    void theEnvironmentLeadsNowhereElse()
    {
        const QByteArrayList base =
            GitEnvironment::base({"HOME=/h", "GIT_DIR=/x", "GIT_EXTERNAL_DIFF=/x", "GIT_CONFIG_COUNT=1",
                                  "GIT_CONFIG_KEY_0=a.b", "GIT_CONFIG_VALUE_0=c", "GIT_CONFIG_GLOBAL=/g",
                                  "GIT_SSH_COMMAND=ssh", "GIT_ALLOW_PROTOCOL=ext:https"});
        QCOMPARE(base,
                 QByteArrayList({"HOME=/h", "GIT_CONFIG_GLOBAL=/g", "GIT_SSH_COMMAND=ssh",
                                 "GIT_ALLOW_PROTOCOL=ext:https", "GIT_TERMINAL_PROMPT=0",
                                 "GIT_OPTIONAL_LOCKS=0", "GIT_ASKPASS=", "SSH_ASKPASS_REQUIRE=never"}));
        QVERIFY(GitEnvironment::forReading(base, {}).contains("GIT_ALLOW_PROTOCOL="));
        QVERIFY(GitEnvironment::forFetch(base, {}).contains("GIT_ALLOW_PROTOCOL=https"));
    }

    void theFixedOptionsComeFirst()
    {
        const Repository repository;
        auto call =
            repository.setting().call({u"config"_s, u"--list"_s, u"--show-scope"_s}, repository.path());
        const QString own = GitProcess::run(call).out;
        for (const QString &line : {u"command\tcommit.gpgsign=false"_s, u"command\tcore.fsmonitor=false"_s,
                                    u"command\tgc.auto=0"_s})
            QVERIFY2(own.contains(line), qPrintable(own));
        call.program = u"/usr/bin/env"_s;
        call.arguments = {u"echo"_s, u"x"_s};
        QCOMPARE(GitProcess::run(call).out, u"x\n"_s);
    }

    void failureTextIsBounded()
    {
        QCOMPARE(GitProcess::failureText(u" \n"_s, u"diff"_s, 9), u"git diff 실패(종료 코드 9)"_s);
        QCOMPARE(GitProcess::failureText(QString(200, u'가'), u"diff"_s, 9), QString(100, u'가'));
    }

    void anyNameSurvives()
    {
        QVERIFY(rc::check([](const std::string &name) {
            const QByteArray bytes = QByteArray::fromStdString(name);
            RC_ASSERT(GitPath::encode(GitPath::decode(bytes)) == bytes);
        }));
        QVERIFY(rc::check([] {
            const auto pieces = *rc::gen::container<std::vector<std::string>>(
                rc::gen::element<std::string>("한", "😀", "\xef\xbb\xbf", "\xff", "\xed\xb2\x80", "\xf0\x9f",
                                              "\xc0\xaf", "\xed\xa0\x80", "a"));
            QByteArray bytes;
            for (const std::string &piece : pieces)
                bytes += piece.c_str();
            const QString text = GitPath::decode(bytes);
            RC_ASSERT(GitPath::encode(text) == bytes);
            RC_ASSERT(GitPath::shown(text).isValidUtf16());
            if (bytes.isValidUtf8())
                RC_ASSERT(text.toUtf8() == bytes);
        }));
    }
};

VESK_TEST(GitProcessTest)
#include "GitProcessTest.moc"
