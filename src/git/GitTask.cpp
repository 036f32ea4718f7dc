#include "git/GitTask.h"

namespace Vesk
{

GitSetting GitSetting::ofCaller()
{
    return {.environment = GitEnvironment::base(GitEnvironment::inherited()),
            .cancel = std::make_shared<GitCancel>()};
}

GitSetting GitSetting::located() const
{
    GitSetting setting = *this;
    setting.git = GitProcess::gitURL().value_or(QString());
    return setting;
}

GitProcess::Call GitSetting::call(const QStringList &arguments, const QString &cwd) const
{
    return {.program = git, .arguments = arguments, .cwd = cwd, .environment = environment, .cancel = cancel};
}

QThreadPool *gitPool()
{
    constexpr int threads = 6;
    static QThreadPool pool;
    pool.setMaxThreadCount(threads);
    return &pool;
}

void GitTask::cancel()
{
    if (m_cancel)
        m_cancel->request();
}

} // namespace Vesk
