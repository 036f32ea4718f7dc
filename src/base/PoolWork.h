// Blocking work on the thread pool, and its value brought back.
#pragma once

#include <QFutureWatcher>
#include <QObject>
#include <QPromise>
#include <QThreadPool>

#include <memory>
#include <type_traits>
#include <utility>

namespace Vesk
{

/**
 * Calls `work` on a thread pool and then `done` with its value, on the thread of `context`. It takes and
 * gives values alone. When `context` is gone by then, `done` is not called.
 */
template <typename Work, typename Done>
void workOnPool(QObject *context, Work work, Done done, QThreadPool *pool = QThreadPool::globalInstance())
{
    using Value = std::invoke_result_t<Work>;
    auto *watcher = new QFutureWatcher<Value>(context);
    QObject::connect(watcher, &QFutureWatcherBase::finished, context, [watcher, done = std::move(done)] {
        watcher->deleteLater();
        if (watcher->future().resultCount() > 0)
            done(watcher->result());
    });
    auto promise = std::make_shared<QPromise<Value>>();
    watcher->setFuture(promise->future());
    pool->start([promise, work = std::move(work)] {
        promise->start();
        promise->addResult(work());
        promise->finish();
    });
}

} // namespace Vesk
