#include "git/GitChild_p.h"

#include <QDeadlineTimer>

#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <vector>

namespace Vesk
{
namespace
{

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds killGrace = 2s;
constexpr int slicePollMs = 5; // where the kernel has no descriptor for a child's end

std::vector<char *> pointers(const QByteArrayList &strings)
{
    std::vector<char *> all;
    all.reserve(static_cast<std::size_t>(strings.size()) + 1);
    for (const QByteArray &each : strings)
        all.push_back(const_cast<char *>(each.constData())); // posix_spawn only reads them
    all.push_back(nullptr);
    return all;
}

/** The error number, 0 when it runs. A child made this way costs the same however large this process is. */
int spawn(const GitChildStart &start, pid_t &pid)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (start.input != STDIN_FILENO)
        posix_spawn_file_actions_adddup2(&actions, start.input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, start.output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, start.error, STDERR_FILENO);
    if (!start.folder.isEmpty())
        posix_spawn_file_actions_addchdir_np(&actions, start.folder.constData());

    // A session of its own has no terminal to ask a password on. Signals that this program ignores would stay
    // ignored in the child, which would then be deaf to a request to end.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t all;
    sigset_t none;
    sigfillset(&all);
    sigemptyset(&none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);

    const std::vector<char *> arguments = pointers(start.command);
    const std::vector<char *> environment = pointers(start.environment);
    const int error =
        ::posix_spawn(&pid, arguments.front(), &actions, &attributes, arguments.data(), environment.data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

bool hasEnded(pid_t pid)
{
    siginfo_t info {};
    return ::waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOHANG | WNOWAIT) != 0
        || info.si_pid == pid;
}

/** Waits for the child without fetching its status, so that its id stays its own and that of its group. */
class Watch
{
public:
    explicit Watch(pid_t pid)
        : m_pid(pid)
        , m_descriptor(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)))
    {
    }
    ~Watch()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Watch(const Watch &) = delete;
    Watch &operator=(const Watch &) = delete;

    /** True when the child has ended; false at the deadline, or when `cancel` asks. */
    [[nodiscard]] bool waitUntil(const QDeadlineTimer &deadline, const GitCancel *cancel) const
    {
        while (!hasEnded(m_pid)) {
            if (deadline.hasExpired() || (cancel && cancel->isRequested()))
                return false;
            std::array<pollfd, 2> watched {pollfd {m_descriptor, POLLIN, 0},
                                           pollfd {cancel ? cancel->descriptor() : -1, POLLIN, 0}};
            const bool needsSlices = m_descriptor < 0 || (cancel && cancel->descriptor() < 0);
            int wait = deadline.isForever()
                ? -1
                : static_cast<int>(std::min<qint64>(deadline.remainingTime() + 1, INT_MAX));
            if (needsSlices)
                wait = wait < 0 ? slicePollMs : std::min(wait, slicePollMs);
            ::poll(watched.data(), watched.size(), wait);
        }
        return true;
    }

private:
    pid_t m_pid;
    int m_descriptor;
};

} // namespace

GitChildEnd runGitChild(const GitChildStart &start, std::optional<std::chrono::milliseconds> timeout,
                        const GitCancel *cancel)
{
    using Reason = GitChildEnd::Reason;
    if (cancel && cancel->isRequested())
        return {Reason::Cancelled, ECANCELED};
    pid_t pid = -1;
    if (const int error = spawn(start, pid); error != 0)
        return {Reason::NotStarted, error};

    const Watch watch(pid);
    auto reason = Reason::Exited;
    if (!watch.waitUntil(timeout ? QDeadlineTimer(*timeout) : QDeadlineTimer(QDeadlineTimer::Forever),
                         cancel)) {
        reason = cancel && cancel->isRequested() ? Reason::Cancelled : Reason::TimedOut;
        ::kill(-pid, SIGTERM);
        (void)watch.waitUntil(QDeadlineTimer(killGrace), nullptr);
        ::kill(-pid, SIGKILL); // also for what outlived the child: its id still stands for the group
    }

    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) { }
    return {reason, WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status)};
}

} // namespace Vesk
