// Git on a repository that may have come from anywhere: reading it runs nothing that it names.
#pragma once

#include "base/Result.h"
#include "git/GitProcess.h"
#include "git/GitTask.h"

namespace Vesk
{

/** Calls that read one repository, behind what its configuration asked to be closed. Blocks, so for pool
    threads. */
class GuardedGit
{
public:
    /**
     * Reads the configuration of the repository at `root`, and that of the submodules in its work tree, which
     * git enters on its own. Starts nothing but git's listing of settings. Unavailable without git,
     * Unreadable with git's words when the configuration is not to be had.
     */
    [[nodiscard]] static Result<GuardedGit> open(const GitSetting &setting, const QString &root);

    /** What needs no repository to be known yet: finding one. */
    [[nodiscard]] static GuardedGit unprepared(const GitSetting &setting, const QString &folder);

    [[nodiscard]] GitProcess::Output run(const QStringList &arguments) const;
    [[nodiscard]] GitProcess::CappedOutput runCapped(const QStringList &arguments,
                                                     qint64 maxOutputBytes) const;

    [[nodiscard]] const QString &root() const { return m_root; }

private:
    GuardedGit(GitSetting setting, QString root)
        : m_setting(std::move(setting))
        , m_root(std::move(root))
    {
    }

    GitSetting m_setting; // with the environment of reads
    QString m_root;
};

/** Takes the one line end off that git puts behind a path. */
[[nodiscard]] QByteArray withoutLineEnd(QByteArray bytes);

} // namespace Vesk
