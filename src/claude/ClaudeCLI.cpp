#include "claude/ClaudeCLI.h"

#include "base/Text.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFutureWatcher>
#include <QPointer>
#include <QProcess>
#include <QPromise>
#include <QThreadPool>

#include <pwd.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace Vesk
{

namespace ClaudeCLI
{

namespace
{

QString shellOfPasswordDatabase()
{
    std::vector<char> buffer(16 * 1024);
    passwd entry {};
    passwd *found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found || !found->pw_shell)
        return {};
    return QFile::decodeName(found->pw_shell);
}

// Takes the shell and everything that its profile started.
void killGroup(QProcess &process)
{
    if (const qint64 pid = process.processId(); pid > 0)
        ::kill(static_cast<pid_t>(-pid), SIGKILL);
    process.kill();
    process.waitForFinished(1000);
}

bool finishes(QProcess &process, std::chrono::milliseconds timeout, const std::atomic_bool *cancelled)
{
    constexpr int sliceMs = 50; // how late a cancellation may be noticed
    const QDeadlineTimer deadline(timeout);
    while (!process.waitForFinished(sliceMs)) {
        if (process.state() == QProcess::NotRunning)
            return false;
        if (deadline.hasExpired() || (cancelled && *cancelled)) {
            killGroup(process);
            return false;
        }
    }
    return true;
}

} // namespace

QStringList candidatePaths(const QString &home)
{
    return {home + QStringLiteral("/.local/bin/claude"), QStringLiteral("/opt/homebrew/bin/claude"),
            QStringLiteral("/usr/local/bin/claude"), QStringLiteral("/usr/bin/claude"),
            home + QStringLiteral("/.claude/local/claude")};
}

bool isExecutableFile(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat info {
    };
    return ::stat(name.constData(), &info) == 0 && S_ISREG(info.st_mode)
        && ::access(name.constData(), X_OK) == 0;
}

QString loginShell()
{
    for (const QString &shell : {shellOfPasswordDatabase(), QStringLiteral("/bin/zsh")}) {
        if (isExecutableFile(shell))
            return shell;
    }
    return QStringLiteral("/bin/sh");
}

QString probeLoginShell(const QString &shell, std::chrono::milliseconds timeout,
                        const std::atomic_bool *cancelled)
{
    QProcess process;
    process.setProgram(shell);
    process.setArguments({QStringLiteral("-lc"), QStringLiteral("command -v claude")});
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setChildProcessModifier([] { ::setsid(); });
    process.start();
    if (!finishes(process, timeout, cancelled) || process.exitStatus() != QProcess::NormalExit)
        return {};

    // A profile may greet before the answer comes.
    const QString output = Text::trimWhitespace(QString::fromUtf8(process.readAllStandardOutput()));
    for (const QString &path : {output, Text::trimWhitespace(output.section(u'\n', -1))}) {
        if (QDir::isAbsolutePath(path) && isExecutableFile(path))
            return path;
    }
    return {};
}

QString resolveExecutable(const QString &home, const std::atomic_bool *cancelled)
{
    const QStringList candidates = candidatePaths(home);
    const auto found = std::ranges::find_if(candidates, isExecutableFile);
    return found != candidates.end() ? *found : probeLoginShell(loginShell(), probeTimeout, cancelled);
}

QString notInstalledMessage()
{
    return QStringLiteral(
        "claude 실행 파일을 찾지 못했습니다. 설치가 필요합니다:\n"
        "  npm install -g @anthropic-ai/claude-code\n"
        "설치 후 orvane를 재시작하면 인식됩니다. (계정 관리 창에서 설치 안내를 볼 수 있습니다.)");
}

} // namespace ClaudeCLI

ExecutableLocator::ExecutableLocator(QObject *parent)
    : QObject(parent)
{
}

ExecutableLocator::ExecutableLocator(const QString &path, QObject *parent)
    : QObject(parent)
    , m_path(path)
{
}

ExecutableLocator::~ExecutableLocator()
{
    // The end of the program waits for the pool: a shell with a slow profile must not hold it up.
    if (m_cancelled)
        *m_cancelled = true;
}

void ExecutableLocator::resolve()
{
    if (m_path || m_cancelled)
        return;
    m_cancelled = std::make_shared<std::atomic_bool>(false);

    auto *watcher = new QFutureWatcher<QString>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher] {
        watcher->deleteLater();
        setPath(watcher->future().resultCount() > 0 ? watcher->result() : QString());
    });
    auto promise = std::make_shared<QPromise<QString>>();
    watcher->setFuture(promise->future());
    QThreadPool::globalInstance()->start([promise, cancelled = m_cancelled, home = QDir::homePath()] {
        promise->start();
        promise->addResult(ClaudeCLI::resolveExecutable(home, cancelled.get()));
        promise->finish();
    });
}

void ExecutableLocator::setPath(const QString &path)
{
    m_cancelled.reset();
    m_path = path;
    Q_EMIT resolved();
}

void ExecutableLocator::whenResolved(QObject *context, std::function<void(const QString &)> done)
{
    if (m_path) {
        done(*m_path);
        return;
    }
    connect(
        this, &ExecutableLocator::resolved, context, [this, done = std::move(done)] { done(*m_path); },
        Qt::SingleShotConnection);
    resolve();
}

} // namespace Vesk
