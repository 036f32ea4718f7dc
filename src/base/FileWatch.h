// Events of one file or folder.
#pragma once

#include <QPointer>
#include <QString>

#include <tl/expected.hpp>

#include <chrono>
#include <functional>
#include <memory>

namespace Vesk
{

class InotifyHub;

/**
 * Calls a handler on the main loop when a file is written, renamed, deleted or changes its attributes, or
 * when a direct entry of a folder comes, goes or moves. What happened between two turns of the loop gives one
 * call.
 *
 * The watch is on the file that had the name when it was opened, whatever takes the name later; it keeps no
 * descriptor of it, so a disk can be unmounted. When the system has no more watches to give, or refuses one,
 * the path is looked at every two seconds instead. Destroying it cancels; the handler may do that.
 */
class FileWatch
{
public:
    using Handler = std::function<void()>;

    enum class Kind {
        File,   ///< write, rename, delete, attribute change
        Folder, ///< write (an entry comes, goes or moves), rename, delete
    };
    enum class Means {
        Events,
        Looking, ///< at the path, again and again
    };
    static constexpr std::chrono::milliseconds defaultLookInterval {2000};

    /** The number of the system's error when the path cannot be opened. */
    [[nodiscard]] static tl::expected<std::unique_ptr<FileWatch>, int>
    open(const QString &path, Kind kind, Handler onEvent, Means means = Means::Events,
         std::chrono::milliseconds lookInterval = defaultLookInterval);

    ~FileWatch();
    FileWatch(const FileWatch &) = delete;
    FileWatch &operator=(const FileWatch &) = delete;
    FileWatch(FileWatch &&) = delete;
    FileWatch &operator=(FileWatch &&) = delete;

    [[nodiscard]] Means means() const;
    /** False once what was watched is gone, and no call will come any more. */
    [[nodiscard]] bool isAlive() const { return m_alive; }

private:
    friend class InotifyHub;
    class Looker;

    FileWatch();

    Handler m_onEvent;
    bool m_alive = true;
    QPointer<InotifyHub> m_hub;
    int m_watch = -1; // its number for it
    quint32 m_mask = 0;
    std::unique_ptr<Looker> m_looker;
};

} // namespace Vesk
