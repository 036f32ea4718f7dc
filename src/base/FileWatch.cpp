#include "base/FileWatch.h"

#include <QCoreApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QMultiHash>
#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

namespace Vesk
{
namespace
{

Q_LOGGING_CATEGORY(lcFileWatch, "vesk.base.watch")

constexpr quint32 fileEvents = IN_MODIFY | IN_CLOSE_WRITE | IN_MOVE_SELF | IN_DELETE_SELF | IN_ATTRIB;
constexpr quint32 folderEvents =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MOVE_SELF | IN_DELETE_SELF;
constexpr quint32 endEvents = IN_IGNORED | IN_UNMOUNT;

} // namespace

/** The one inotify instance of the process, shared by all watches; it lives as long as the application. */
class InotifyHub : public QObject
{
public:
    static InotifyHub *instance()
    {
        static QPointer<InotifyHub> hub;
        if (!hub)
            hub = new InotifyHub(QCoreApplication::instance());
        return hub;
    }

    ~InotifyHub() override
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }

    /** Watches what is behind the descriptor; 0 or the number of the error. */
    int add(int descriptor, quint32 mask, FileWatch *watch)
    {
        if (m_fd < 0 && !openInstance())
            return errno;
        // By way of the descriptor, so that it is the file that was opened, whoever took its name since. Two
        // watches on one file share a number: the mask of the second adds to the first.
        const QByteArray link = "/proc/self/fd/" + QByteArray::number(descriptor);
        const int number = ::inotify_add_watch(m_fd, link.constData(), mask | IN_MASK_ADD);
        if (number < 0)
            return errno;
        watch->m_hub = this;
        watch->m_watch = number;
        watch->m_mask = mask;
        m_watches.insert(number, watch);
        return 0;
    }

    void remove(FileWatch *watch)
    {
        const int number = watch->m_watch;
        if (m_watches.remove(number, watch) > 0 && !m_watches.contains(number))
            ::inotify_rm_watch(m_fd, number);
    }

private:
    explicit InotifyHub(QObject *parent)
        : QObject(parent)
    {
    }

    bool openInstance()
    {
        m_fd = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
        if (m_fd < 0)
            return false;
        auto *notifier = new QSocketNotifier(m_fd, QSocketNotifier::Read, this);
        connect(notifier, &QSocketNotifier::activated, this, &InotifyHub::drain);
        return true;
    }

    // Reads all that waits, then calls each watch once: its handler sees a state behind all those events.
    void drain()
    {
        QHash<int, quint32> happened;
        bool lost = false;
        alignas(inotify_event) std::array<char, 16 * 1024> buffer;
        for (;;) {
            const ssize_t size = ::read(m_fd, buffer.data(), buffer.size());
            if (size < 0 && errno == EINTR)
                continue;
            if (size <= 0)
                break;
            inotify_event event {};
            for (ssize_t at = 0; at + ssize_t(sizeof event) <= size;
                 at += ssize_t(sizeof event) + event.len) {
                std::memcpy(&event, buffer.data() + at, sizeof event);
                lost = lost || (event.mask & IN_Q_OVERFLOW) != 0;
                happened[event.wd] |= event.mask;
            }
        }
        QList<std::pair<int, FileWatch *>> called;
        for (auto it = m_watches.cbegin(); it != m_watches.cend(); ++it) {
            const quint32 mask = happened.value(it.key());
            if (lost || (mask & (it.value()->m_mask | endEvents)) != 0)
                called.append({it.key(), it.value()});
        }
        for (const auto &[number, watch] : std::as_const(called)) {
            if (!m_watches.contains(number, watch))
                continue; // cancelled by another one's handler
            if ((happened.value(number) & endEvents) != 0) {
                watch->m_alive = false;
                m_watches.remove(number, watch);
            }
            const auto handler = watch->m_onEvent; // may destroy the watch
            handler();
        }
    }

    int m_fd = -1;
    QMultiHash<int, FileWatch *> m_watches;
};

/** Compares what is at a path with what was there. */
class FileWatch::Looker
{
public:
    Looker(QByteArray path, Kind kind, FileWatch *watch, std::chrono::milliseconds interval)
        : m_path(std::move(path))
        , m_kind(kind)
        , m_seen(look())
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this, watch] {
            const Sight now = look();
            if (std::exchange(m_seen, now) == now)
                return;
            const auto handler = watch->m_onEvent; // may destroy the watch
            handler();
        });
        m_timer.start(interval);
    }

private:
    using Sight = std::array<qint64, 7>;

    [[nodiscard]] Sight look() const
    {
        struct stat status {
        };
        if (::stat(m_path.constData(), &status) != 0)
            return {};
        Sight sight {qint64(status.st_dev),  qint64(status.st_ino), status.st_mtim.tv_sec,
                     status.st_mtim.tv_nsec, status.st_ctim.tv_sec, status.st_ctim.tv_nsec,
                     qint64(status.st_size)};
        if (m_kind == Kind::Folder)
            sight[4] = sight[5] = sight[6] = 0;
        return sight;
    }

    QByteArray m_path;
    Kind m_kind;
    Sight m_seen;
    QTimer m_timer;
};

FileWatch::FileWatch() = default;

FileWatch::~FileWatch()
{
    if (m_hub)
        m_hub->remove(this);
}

FileWatch::Means FileWatch::means() const
{
    return m_looker ? Means::Looking : Means::Events;
}

tl::expected<std::unique_ptr<FileWatch>, int> FileWatch::open(const QString &path, Kind kind, Handler onEvent,
                                                              Means means,
                                                              std::chrono::milliseconds lookInterval)
{
    const QByteArray name = QFile::encodeName(path);
    const int descriptor = ::open(name.constData(), O_PATH | O_CLOEXEC);
    if (descriptor < 0)
        return tl::unexpected(errno);
    std::unique_ptr<FileWatch> watch(new FileWatch);
    watch->m_onEvent = std::move(onEvent);
    if (means == Means::Events) {
        const int error = InotifyHub::instance()->add(
            descriptor, kind == Kind::File ? fileEvents : folderEvents, watch.get());
        if (error != 0) {
            means = Means::Looking;
            qCWarning(lcFileWatch, "no events of %s (%s): looking at it every %lld ms", qUtf8Printable(path),
                      qUtf8Printable(qt_error_string(error)), static_cast<long long>(lookInterval.count()));
        }
    }
    if (means == Means::Looking)
        watch->m_looker = std::make_unique<Looker>(name, kind, watch.get(), lookInterval);
    ::close(descriptor);
    return watch;
}

} // namespace Vesk
