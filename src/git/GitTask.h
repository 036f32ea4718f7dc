// Git work on threads of its own, with a handle that ends it.
#pragma once

#include "base/PoolWork.h"
#include "git/GitCancel.h"
#include "git/GitEnvironment.h"
#include "git/GitProcess.h"

#include <QObject>
#include <QString>

#include <memory>
#include <utility>

namespace Vesk
{

/** What a piece of git work is given. */
struct GitSetting {
    QString git {};                ///< the program; empty when there is none
    QByteArrayList environment {}; ///< GitEnvironment::base()
    std::shared_ptr<GitCancel> cancel {};

    /** For the thread that asks: all but the program, whose search may block. */
    [[nodiscard]] static GitSetting ofCaller();
    /** For a pool thread: with the program. */
    [[nodiscard]] GitSetting located() const;

    /** A call in this setting. */
    [[nodiscard]] GitProcess::Call call(const QStringList &arguments, const QString &cwd) const;
};

/** Where git works: a call blocks its thread, and a hung one must not hold up the program's other work. */
[[nodiscard]] QThreadPool *gitPool();

/** The handle of a piece of work. Letting it go does not end the work. */
class GitTask
{
public:
    GitTask() = default;
    explicit GitTask(std::shared_ptr<GitCancel> cancel)
        : m_cancel(std::move(cancel))
    {
    }

    /** Ends the git that runs and all that it started. Its value is never delivered. */
    void cancel();

private:
    std::shared_ptr<GitCancel> m_cancel;
};

/**
 * Calls `work(setting)` on a git thread and then `done` with its value, on the thread of `context`. With the
 * death of `context`, or a cancel, the work ends and `done` is not called.
 */
template <typename Work, typename Done>
GitTask startGitTask(QObject *context, Work work, Done done)
{
    const GitSetting setting = GitSetting::ofCaller();
    auto *guard = new QObject(context);
    QObject::connect(guard, &QObject::destroyed, [cancel = setting.cancel] { cancel->request(); });
    workOnPool(
        guard, [setting, work = std::move(work)] { return work(setting.located()); },
        [guard, cancel = setting.cancel, done = std::move(done)](const auto &value) {
            const bool isWanted = !cancel->isRequested();
            guard->deleteLater();
            if (isWanted)
                done(value);
        },
        gitPool());
    return GitTask(setting.cancel);
}

} // namespace Vesk
