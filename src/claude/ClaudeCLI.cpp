#include "claude/ClaudeCLI.h"

#include "base/LoginShell.h"

#include <QDir>
#include <QFutureWatcher>
#include <QPromise>
#include <QThreadPool>

#include <algorithm>
#include <utility>

namespace Vesk
{

namespace ClaudeCLI
{

QStringList candidatePaths(const QString &home)
{
    return {home + QStringLiteral("/.local/bin/claude"), QStringLiteral("/opt/homebrew/bin/claude"),
            QStringLiteral("/usr/local/bin/claude"), QStringLiteral("/usr/bin/claude"),
            home + QStringLiteral("/.claude/local/claude")};
}

bool isExecutableFile(const QString &path)
{
    return LoginShell::isExecutableFile(path);
}

QString loginShell()
{
    return LoginShell::path();
}

QString probeLoginShell(const QString &shell, std::chrono::milliseconds timeout,
                        const std::atomic_bool *cancelled)
{
    return LoginShell::probe(shell, QStringLiteral("claude"), timeout, cancelled);
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
