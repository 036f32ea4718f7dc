#include "sessions/SessionScan.h"

#include "claude/TranscriptTitle.h"

#include <QElapsedTimer>
#include <QPromise>
#include <QThread>
#include <QThreadPool>

#include <algorithm>
#include <atomic>
#include <utility>

namespace Vesk
{

namespace
{

constexpr int tellEveryMs = 40;
constexpr int mostReaders = 4;
constexpr qsizetype mostKnown = 100'000;

} // namespace

/** One scan, shared by the threads that read for it. `files` is written before the readers start. */
struct SessionScan::Work {
    QString root, cwd;
    QHash<QString, ReadTitle> known;
    QPromise<Batch> promise;
    QList<ListedFile> files;
    std::atomic<qsizetype> next = 0;
    std::atomic<int> readers = 0;
};

SessionScan::SessionScan(QObject *parent)
    : QObject(parent)
{
}

SessionScan::~SessionScan()
{
    cancel();
}

void SessionScan::start(const QString &root, const QString &alias, const QString &cwd)
{
    cancel();
    m_unreadable.clear();
    auto work = std::make_shared<Work>();
    work->root = root;
    work->cwd = cwd;
    work->known = m_known;

    m_watcher = new Watcher(this);
    connect(m_watcher, &Watcher::resultReadyAt, this, [this, watcher = m_watcher, alias, cwd](int index) {
        if (watcher == m_watcher)
            take(watcher->resultAt(index), alias, cwd);
    });
    connect(m_watcher, &Watcher::finished, this, [this, watcher = m_watcher] {
        watcher->deleteLater();
        if (std::exchange(m_watcher, watcher == m_watcher ? nullptr : m_watcher) == watcher)
            Q_EMIT finished(m_unreadable);
    });
    work->promise.start();
    m_watcher->setFuture(work->promise.future());
    QThreadPool::globalInstance()->start([work] { list(work); });
}

void SessionScan::cancel()
{
    if (Watcher *watcher = std::exchange(m_watcher, nullptr)) {
        watcher->disconnect(this);
        watcher->future().cancel();
        watcher->deleteLater();
    }
}

void SessionScan::take(const Batch &batch, const QString &alias, const QString &cwd)
{
    if (m_known.size() > mostKnown)
        m_known.clear();
    m_unreadable << batch.unreadable;
    QList<ResumableSession> sessions;
    sessions.reserve(batch.read.size());
    for (const ReadTitle &each : batch.read) {
        m_known.insert(each.file.path, each);
        sessions.append(ClaudeSessionHistory::session(each.file, alias, cwd, each.title));
    }
    if (!sessions.isEmpty())
        Q_EMIT found(sessions);
}

// On the pool. What is known already is told at once.
void SessionScan::list(const std::shared_ptr<Work> &work)
{
    auto [files, unreadable] = ClaudeSessionHistory::transcripts(work->root, work->cwd);
    Batch known {.read = {}, .unreadable = unreadable};
    for (const ListedFile &file : std::as_const(files)) {
        const auto read = work->known.constFind(file.path);
        if (read != work->known.constEnd() && read->file.sameState(file))
            known.read.append(*read);
        else
            work->files.append(file);
    }
    work->promise.addResult(std::move(known));
    const auto wanted =
        std::clamp<qsizetype>(work->files.size(), 1, std::min(mostReaders, QThread::idealThreadCount()));
    work->readers = static_cast<int>(wanted);
    for (qsizetype reader = 1; reader < wanted; ++reader)
        QThreadPool::globalInstance()->start([work] { readTitles(work); });
    readTitles(work);
}

// On the pool, on several threads.
void SessionScan::readTitles(const std::shared_ptr<Work> &work)
{
    const auto isCancelled = [&work] { return work->promise.isCanceled(); };
    TitleScan scan;
    Batch batch;
    QElapsedTimer sinceTold;
    sinceTold.start();
    const auto tell = [&] {
        if (!batch.read.isEmpty())
            work->promise.addResult(std::exchange(batch, {}));
        sinceTold.restart();
    };
    while (!isCancelled()) {
        const qsizetype index = work->next.fetch_add(1);
        if (index >= work->files.size())
            break;
        const ListedFile &file = work->files.at(index);
        std::optional<QString> title = quickTitle(file.path, scan, isCancelled);
        if (!isCancelled()) // else it may be half of the truth
            batch.read.append({file, std::move(title)});
        if (sinceTold.hasExpired(tellEveryMs))
            tell();
    }
    tell();
    if (work->readers.fetch_sub(1) == 1)
        work->promise.finish();
}

} // namespace Vesk
