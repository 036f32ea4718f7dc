#include "sessions/ComposerFileLookup.h"

#include "base/PoolWork.h"
#include "sessions/ComposerAtFileSearch.h"

namespace Vesk
{

ComposerFileLookup::~ComposerFileLookup()
{
    // The end of the program waits for the pool.
    m_stop.request_stop();
}

void ComposerFileLookup::find(const QString &query, const QString &cwd)
{
    cancel();
    m_stop = {};
    m_running = true;
    const std::stop_token stop = m_stop.get_token();
    workOnPool(
        this, [query, cwd, stop] { return ComposerAtFileSearch::search(query, cwd, limit, stop); },
        [this, stop](const QStringList &paths) {
            if (stop.stop_requested())
                return;
            m_running = false;
            Q_EMIT found(paths);
        });
}

void ComposerFileLookup::cancel()
{
    m_stop.request_stop();
    m_running = false;
}

} // namespace Vesk
