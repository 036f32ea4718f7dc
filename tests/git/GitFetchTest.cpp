#include "git/GitFetch.h"

#include "git/GitStatusReader.h"
#include "git/PullToRefresh.h"
#include "Repository.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <thread>

using namespace Vesk;
using namespace Vesk::Test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using GitFetch::Outcome;

namespace
{

QByteArray listing(QByteArray text)
{
    return text.replace('@', '\0');
}

/** A repository with a remote that is a step ahead of it. */
struct Pair {
    Repository repository;
    QString remote = repository.folder() + u"/remote"_s;

    Pair()
    {
        repository.commit(u"base"_s);
        repository.git({u"branch"_s, u"old"_s});
        repository.git({u"clone"_s, u"-q"_s, u"--bare"_s, repository.path(), remote});
        repository.git({u"branch"_s, u"-D"_s, u"old"_s});
        repository.git({u"remote"_s, u"add"_s, u"origin"_s, remote});
        repository.git({u"fetch"_s, u"-q"_s, u"origin"_s});
        advance();
    }
    void advance() const
    {
        const QString clone = repository.folder() + u"/clone"_s;
        QDir(clone).removeRecursively();
        repository.git({u"clone"_s, u"-q"_s, remote, clone});
        repository.git({u"commit"_s, u"-q"_s, u"--allow-empty"_s, u"-m"_s, u"news"_s}, clone);
        repository.git({u"push"_s, u"-q"_s, u"origin"_s, u"main"_s}, clone);
    }
    [[nodiscard]] Outcome fetch(std::chrono::seconds limit = GitFetch::timeLimit) const
    {
        return GitFetch::perform(repository.setting(), repository.path(), true, limit);
    }
};

/** Takes connections and answers each with the same bytes when it has been spoken to, or never. */
class Server
{
public:
    explicit Server(QByteArray answer = {})
        : m_answer(std::move(answer))
        , m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto *any = reinterpret_cast<sockaddr *>(&address);
        if (::bind(m_socket, any, size) != 0 || ::listen(m_socket, 8) != 0
            || ::getsockname(m_socket, any, &size) != 0)
            QTest::qFail("no server", __FILE__, __LINE__);
        m_port = ntohs(address.sin_port);
        m_thread = std::thread([this] { serve(); });
    }
    ~Server()
    {
        ::shutdown(m_socket, SHUT_RDWR); // ends the wait for the next connection
        m_thread.join();
        ::close(m_socket);
        for (const int each : m_open)
            ::close(each);
    }
    Server(const Server &) = delete;
    Server &operator=(const Server &) = delete;

    [[nodiscard]] int port() const { return m_port; }
    [[nodiscard]] int connections() const { return m_connections; }

private:
    void serve()
    {
        for (int client = 0; (client = ::accept4(m_socket, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
            ++m_connections;
            char request = 0;
            if (m_answer.isEmpty()) {
                m_open.append(client);
                continue;
            }
            (void)::recv(client, &request, 1, 0);
            (void)::send(client, m_answer.constData(), size_t(m_answer.size()), MSG_NOSIGNAL);
            ::shutdown(client, SHUT_WR);
            while (::recv(client, &request, 1, 0) > 0) { }
            ::close(client);
        }
    }

    QByteArray m_answer;
    int m_socket;
    int m_port = 0;
    QList<int> m_open;
    std::atomic_int m_connections = 0;
    std::thread m_thread;
};

} // namespace

class GitFetchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commandKeys_data()
    {
        QTest::addColumn<bool>("isCommand");
        for (const char *key :
             {"core.sshCommand", "core.gitproxy", "core.askpass", "core.alternaterefscommand",
              "credential.helper", "credential.https://a.b/c.helper", "remote.origin.uploadpack",
              "remote.a.b.receivepack", "remote.x.VCS", "http.cookiefile", "http.https://x.cookieFile",
              "http.savecookies", "http.x.savecookies"})
            QTest::newRow(key) << true;
        for (const char *key :
             {"remote..uploadpack", "remote.uploadpack", "remote.origin.url", "credential.usehttppath",
              "core.sshcommand.x", "xcore.sshcommand", "remote.origin.xvcs", "http.proxy", ""})
            QTest::newRow(key) << false;
    }

    void commandKeys()
    {
        QTEST(GitFetch::isCommandKey(QString::fromLatin1(QTest::currentDataTag())), "isCommand");
    }

    void keysThatBlock()
    {
        QCOMPARE(GitFetch::blockingKeys(listing("global@core.sshcommand@system@credential.helper@")),
                 QStringList());
        QCOMPARE(GitFetch::blockingKeys(
                     listing("local@remote.B.vcs@command@credential.helper@worktree@core.askpass@"
                             "local@remote.b.VCS@local@core.bare@")),
                 QStringList({u"remote.b.vcs"_s, u"credential.helper"_s, u"core.askpass"_s}));
        QCOMPARE(GitFetch::blockingKeys(listing("core.askpass@")), QStringList());
        QCOMPARE(GitFetch::blockingKeys("local"), QStringList());
    }

    void prunes_data()
    {
        QTest::addColumn<QByteArray>("refspecs");
        QTest::addColumn<bool>("isSafe");
        const auto row = [](const char *refspecs, bool isSafe) {
            QTest::newRow(refspecs) << listing(refspecs) << isSafe;
        };
        row("", true);
        row("remote.a.fetch\n+refs/heads/*:refs/remotes/a/*@remote.b.fetch\n refs/heads/x @", true);
        row("remote.a.fetch\n+refs/heads/*:refs/heads/*@", false);
        row("remote.a.fetch\nrefs/heads/*:refs/remotes/a/*@remote.a.fetch\nrefs/tags/*:refs/tags/*@", false);
        row("remote.a.fetch\n^refs/heads/x:refs/heads/y@", true);
        row("remote.a.fetch\n refs/heads/x:@", true);
        row("remote.a.fetch@", true);
    }

    void prunes()
    {
        QFETCH(QByteArray, refspecs);
        QTEST(GitFetch::pruneIsSafe(refspecs), "isSafe");
    }

    void summaries()
    {
        const QString error =
            u"From x\n   abc..def  main -> origin/main\n - [deleted] (none) -> origin/old\nwarning: y\n"_s;
        QCOMPARE(
            GitFetch::summary(error, true),
            u"원격 참조 1개를 갱신했습니다 · 원격에서 지워진 브랜치 1개를 정리했습니다 · 저장소의 fetch refspec이 원격 추적 밖을 가리켜 정리는 건너뛰었습니다"_s);
        QCOMPARE(
            PullToRefresh::notice({.kind = Outcome::Kind::Fetched, .text = GitFetch::summary({}, false)}),
            PullToRefresh::Notice({u"fetch 완료 — 새로 받은 것이 없습니다"_s, false}));
        QCOMPARE(
            PullToRefresh::notice({.kind = Outcome::Kind::Blocked, .keys = {u"a.b"_s, u"c.d"_s}}).text,
            u"fetch하지 않았습니다 — 이 저장소의 설정에 명령을 실행하는 항목이 있습니다(a.b, c.d). 필요하면 세션이나 터미널에서 fetch하세요"_s);
        QVERIFY(PullToRefresh::notice({.kind = Outcome::Kind::Failed, .text = u"x"_s}).isProblem);
        QCOMPARE(PullToRefresh::notice({.kind = Outcome::Kind::NoRemote}).text,
                 u"리모트가 없어 새로고침만 했습니다"_s);
    }

    void fetchesAndPrunes()
    {
        const Pair pair;
        QCOMPARE(pair.fetch().text, u"원격 참조 1개를 갱신했습니다"_s);
        QCOMPARE(pair.fetch().text, u"새로 받은 것이 없습니다"_s);
        pair.repository.git({u"branch"_s, u"-D"_s, u"old"_s}, pair.remote);
        pair.advance();
        QCOMPARE(pair.fetch().text,
                 u"원격 참조 1개를 갱신했습니다 · 원격에서 지워진 브랜치 1개를 정리했습니다"_s);
        QCOMPARE(GitFetch::perform(pair.repository.setting(), pair.repository.path(), false).kind,
                 Outcome::Kind::NoRemote);
        QCOMPARE(GitFetch::perform(pair.repository.settingWithoutGit(), pair.repository.path(), true).text,
                 u"git을 찾을 수 없습니다"_s);
        pair.repository.write(u".git/config"_s, "[core\n");
        QCOMPARE(pair.fetch().text, u"저장소 설정을 읽지 못해 fetch하지 않았습니다"_s);
    }

    // Nothing that the repository names is run by a fetch, and pruning stays with what follows a remote.
    void hostileSettings_data()
    {
        QTest::addColumn<QByteArray>("config");
        QTest::addColumn<QStringList>("keys");
        QTest::newRow("ssh command") << QByteArray(
            "[core]\n\tsshCommand = PROGRAM\n[remote \"far\"]\n\turl = ssh://far.invalid/x\n")
                                     << QStringList {u"core.sshcommand"_s};
        QTest::newRow("upload pack") << QByteArray("[remote \"origin\"]\n\tuploadpack = PROGRAM\n")
                                     << QStringList {u"remote.origin.uploadpack"_s};
        QTest::newRow("remote as option")
            << QByteArray("[remote \"--upload-pack=PROGRAM\"]\n\turl = REMOTE\n")
            << QStringList {u"remote.--upload-pack=program.url"_s};
        QTest::newRow("hooks") << QByteArray("[core]\n\thooksPath = HOOKS\n") << QStringList();
        QTest::newRow("command as address")
            << QByteArray("[remote \"evil\"]\n\turl = ext::PROGRAM\n[protocol]\n\tallow = always\n"
                          "[protocol \"ext\"]\n\tallow = always\n")
            << QStringList();
    }

    void hostileSettings()
    {
        QFETCH(QByteArray, config);
        QFETCH(QStringList, keys);
        const Pair pair;
        const QString folder = pair.repository.folder();
        const QString program = folder + u"/program"_s;
        writeScript(program, ": > '" + QFile::encodeName(folder) + "/ran'\nexec git-upload-pack \"$@\"");
        QVERIFY(QDir().mkpath(folder + u"/hooks"_s));
        QVERIFY(QFile::link(program, folder + u"/hooks/reference-transaction"_s));
        QFile file(pair.repository.path(u".git/config"_s));
        QVERIFY(file.open(QIODevice::Append));
        file.write(config.replace("PROGRAM", QFile::encodeName(program))
                       .replace("REMOTE", QFile::encodeName(pair.remote))
                       .replace("HOOKS", QFile::encodeName(folder + u"/hooks"_s)));
        file.close();
        const Outcome outcome = pair.fetch();
        QVERIFY(!QFile::exists(folder + u"/ran"_s));
        QCOMPARE(outcome.keys, keys.replaceInStrings(u"program"_s, program.toLower()));
        QCOMPARE(outcome.kind == Outcome::Kind::Blocked, !keys.isEmpty());
        pair.advance();
        pair.repository.tryGit({u"fetch"_s, u"--all"_s});
        QVERIFY2(QFile::exists(folder + u"/ran"_s), "the trap is not live");
    }

    void pruningNeverReachesBranches_data()
    {
        QTest::addColumn<QByteArray>("config");
        const QByteArray mirror("[remote \"evil\"]\n\turl = REMOTE\n\tfetch = +refs/heads/*:refs/heads/*\n");
        QTest::newRow("refspec") << mirror;
        QTest::newRow("pruning by settings")
            << mirror + "\tprune = true\n\tpruneTags = true\n[fetch]\n\tprune = true\n";
        QTest::newRow("remote of an older form") << QByteArray("[remote \"evil\"]\n\ttagOpt =\n");
    }

    void pruningNeverReachesBranches()
    {
        QFETCH(QByteArray, config);
        const Pair pair;
        pair.repository.git({u"branch"_s, u"precious"_s});
        pair.repository.git({u"checkout"_s, u"-q"_s, u"--detach"_s});
        pair.repository.write(u".git/remotes/evil"_s,
                              "URL: " + QFile::encodeName(pair.remote)
                                  + "\nPull: +refs/heads/*:refs/heads/*\n");
        QFile file(pair.repository.path(u".git/config"_s));
        QVERIFY(file.open(QIODevice::Append));
        file.write(config.replace("REMOTE", QFile::encodeName(pair.remote)));
        file.close();
        const Outcome outcome = pair.fetch();
        QCOMPARE(outcome.kind, Outcome::Kind::Fetched);
        QVERIFY2(outcome.text.contains(u"정리는 건너뛰었습니다"_s), qPrintable(outcome.text));
        QVERIFY(pair.repository.git({u"branch"_s}).contains(u"precious"_s));
        pair.repository.git({u"fetch"_s, u"--all"_s, u"--prune"_s});
        QVERIFY2(!pair.repository.git({u"branch"_s}).contains(u"precious"_s), "the trap is not live");
    }

    void theSettingsOfThePersonDoNotBlock()
    {
        const Pair pair;
        pair.repository.git({u"config"_s, u"--global"_s, u"core.sshCommand"_s, u"ssh"_s});
        QCOMPARE(pair.fetch().kind, Outcome::Kind::Fetched);
    }

    void remotesThatDoNotPlayAlong_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QString>("scheme");
        QTest::addColumn<QString>("message");
        QTest::newRow("asks for a password") << QByteArray(
            "HTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"x\"\r\nContent-Length: 0\r\n"
            "Connection: close\r\n\r\n") << u"http"_s
                                             << u"terminal prompts disabled"_s;
        QTest::newRow("lies") << QByteArray("0009nope\n0000") << u"git"_s << u"fatal: "_s;
        QTest::newRow("hangs") << QByteArray() << u"git"_s << u"1초 안에 끝나지 않아 멈췄습니다"_s;
    }

    void remotesThatDoNotPlayAlong()
    {
        QFETCH(QByteArray, answer);
        QFETCH(QString, scheme);
        QFETCH(QString, message);
        const Server server(answer);
        const Pair pair;
        pair.repository.git({u"remote"_s, u"set-url"_s, u"origin"_s,
                             u"%1://127.0.0.1:%2/x"_s.arg(scheme).arg(server.port())});
        const Outcome outcome = pair.fetch(answer.isEmpty() ? 1s : 60s);
        QCOMPARE(outcome.kind, Outcome::Kind::Failed);
        QVERIFY2(outcome.text.contains(message), qPrintable(outcome.text));
    }

    void aFetchCanBeCancelled()
    {
        const Server server;
        const Pair pair;
        pair.repository.git(
            {u"remote"_s, u"set-url"_s, u"origin"_s, u"git://127.0.0.1:%1/x"_s.arg(server.port())});
        QObject context;
        GitTask task = GitFetch::run(pair.repository.path(), true, &context,
                                     [](const Outcome &) { QFAIL("delivered"); });
        QTRY_VERIFY(server.connections() > 0);
        task.cancel();
        QVERIFY(gitPool()->waitForDone(30'000)); // the fetch itself would take a minute
        QCoreApplication::processEvents();
    }
};

VESK_TEST(GitFetchTest)
#include "GitFetchTest.moc"
