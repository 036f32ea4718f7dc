#include "git/GitProcess.h"

#include "base/LoginShell.h"
#include "base/Text.h"
#include "base/Utf8Clip.h"
#include "git/GitChild_p.h"
#include "git/GitEnvironment.h"
#include "git/GitPath.h"

#include <QDir>
#include <QFile>
#include <QUuid>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <mutex>
#include <utility>

namespace Vesk::GitProcess
{
namespace
{

constexpr qint64 everything = std::numeric_limits<qint64>::max();
constexpr qint64 maxErrorBytes = qint64 {1024} * 1024;
constexpr qsizetype maxFailureBytes = 300;

/** A descriptor that is closed with this object. */
class Descriptor
{
public:
    explicit Descriptor(int number)
        : m_number(number)
    {
    }
    ~Descriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    [[nodiscard]] int number() const { return m_number; }

    [[nodiscard]] qint64 size() const
    {
        struct stat info {
        };
        return ::fstat(m_number, &info) == 0 ? info.st_size : 0;
    }

    [[nodiscard]] QByteArray read(qint64 maxBytes) const
    {
        QByteArray bytes(static_cast<qsizetype>(std::min(size(), maxBytes)), Qt::Uninitialized);
        qsizetype filled = 0;
        while (filled < bytes.size()) {
            const ssize_t count = ::pread(m_number, bytes.data() + filled,
                                          static_cast<std::size_t>(bytes.size() - filled), filled);
            if (count < 0 && errno == EINTR)
                continue;
            if (count <= 0)
                break;
            filled += count;
        }
        bytes.truncate(filled);
        return bytes;
    }

private:
    int m_number;
};

/** A file that the child can write to without ever waiting for us. Its name goes at once: what is open needs
   none, and so nothing is left behind however this program ends. */
int openOutput(const QString &id, const QString &suffix)
{
    const QByteArray path =
        QFile::encodeName(QDir::tempPath() + QStringLiteral("/orvane-git-") + id + suffix);
    const int file = ::open(path.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0)
        return ::open("/dev/null", O_RDWR | O_CLOEXEC);
    ::unlink(path.constData());
    return file;
}

/** The input as a file in memory: a pipe would have to be fed while the child runs. */
int openInput(const QByteArray &bytes)
{
    const int file = ::memfd_create("git-input", MFD_CLOEXEC);
    for (qsizetype written = 0; file >= 0 && written < bytes.size();) {
        const ssize_t count =
            ::write(file, bytes.constData() + written, static_cast<std::size_t>(bytes.size() - written));
        if (count < 0 && errno != EINTR)
            break;
        written += std::max<ssize_t>(count, 0);
    }
    if (file >= 0)
        ::lseek(file, 0, SEEK_SET);
    return file;
}

QByteArrayList commandOf(const Call &call)
{
    QByteArrayList command {QFile::encodeName(call.program)};
    if (call.program == gitURL())
        command << "-c"
                << "commit.gpgsign=false"
                << "-c"
                << "core.fsmonitor=false"
                << "-c"
                << "gc.auto=0";
    for (const QString &argument : call.arguments)
        command << GitPath::encode(argument);
    return command;
}

QString startFailure(const Call &call, int error)
{
    const bool folderFailed = ::access(GitPath::encode(call.cwd).constData(), X_OK) != 0;
    return (folderFailed ? GitPath::shown(call.cwd) : call.program) + QStringLiteral(": ")
        + qt_error_string(error);
}

struct Executed {
    int code;
    QString err;
};

/** `readOut` is given the child's output when it has ended. */
template <typename ReadOut>
Executed execute(const Call &call, ReadOut readOut)
{
    const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    const Descriptor output(openOutput(id, QStringLiteral(".out")));
    const Descriptor error(openOutput(id, QStringLiteral(".err")));
    const Descriptor input(call.input ? openInput(*call.input) : -1);

    GitChildStart start {
        .command = commandOf(call),
        .environment =
            call.environment.isEmpty() ? GitEnvironment::base(GitEnvironment::inherited()) : call.environment,
        .folder = GitPath::encode(call.cwd),
        .output = output.number(),
        .error = error.number(),
    };
    if (input.number() >= 0)
        start.input = input.number();
    const GitChildEnd end = runGitChild(start, call.timeout, call.cancel.get());
    if (end.reason == GitChildEnd::Reason::NotStarted)
        return {127, startFailure(call, end.code)};

    readOut(output);
    return {end.reason == GitChildEnd::Reason::TimedOut ? timedOutCode : end.code,
            QString::fromUtf8(error.read(maxErrorBytes))};
}

} // namespace

std::optional<QString> resolve(const QString &tool, const QStringList &candidates)
{
    const auto found = std::ranges::find_if(candidates, LoginShell::isExecutableFile);
    if (found != candidates.end())
        return *found;
    const QString probed = LoginShell::probe(LoginShell::path(), tool);
    return probed.isEmpty() ? std::nullopt : std::optional(probed);
}

std::optional<QString> gitURL()
{
    static std::mutex guard;
    static std::optional<QString> url;
    const std::lock_guard lock(guard);
    if (!url) // or it may have been installed since
        url = resolve(QStringLiteral("git"),
                      {QStringLiteral("/usr/bin/git"), QStringLiteral("/opt/homebrew/bin/git"),
                       QStringLiteral("/usr/local/bin/git")});
    return url;
}

Output run(const Call &call)
{
    QByteArray bytes;
    Executed end = execute(call, [&](const Descriptor &file) { bytes = file.read(everything); });
    return {end.code, bytes.isValidUtf8() ? QString::fromUtf8(bytes) : QString(), std::move(end.err)};
}

CappedOutput runCapped(const Call &call, qint64 maxOutputBytes)
{
    QByteArray bytes;
    qint64 total = 0;
    Executed end = execute(call, [&](const Descriptor &file) {
        total = file.size();
        bytes = file.read(maxOutputBytes);
    });
    return {end.code, std::move(bytes), total, std::move(end.err)};
}

QString notFoundMessage()
{
    return QStringLiteral("git을 찾을 수 없습니다");
}

QString failureText(const QString &error, const QString &command, int code)
{
    QString text = Text::trimWhitespace(error);
    if (text.isEmpty())
        text = QStringLiteral("git %1 실패(종료 코드 %2)").arg(command).arg(code);
    return UTF8Clip::prefix(text, maxFailureBytes).text;
}

} // namespace Vesk::GitProcess
