#include "base/LoginShell.h"

#include "base/Text.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>

#include <pwd.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <vector>

namespace Vesk::LoginShell
{

namespace
{

QString shellOfPasswordDatabase()
{
    std::vector<char> buffer(16 * 1024);
    passwd entry {};
    passwd *found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found || !found->pw_shell)
        return {};
    return QFile::decodeName(found->pw_shell);
}

// Takes the shell and everything that its profile started.
void killGroup(QProcess &process)
{
    if (const qint64 pid = process.processId(); pid > 0)
        ::kill(static_cast<pid_t>(-pid), SIGKILL);
    process.kill();
    process.waitForFinished(1000);
}

bool finishes(QProcess &process, std::chrono::milliseconds timeout, const std::atomic_bool *cancelled)
{
    constexpr int sliceMs = 50; // how late a cancellation may be noticed
    const QDeadlineTimer deadline(timeout);
    while (!process.waitForFinished(sliceMs)) {
        if (process.state() == QProcess::NotRunning)
            return false;
        if (deadline.hasExpired() || (cancelled && *cancelled)) {
            killGroup(process);
            return false;
        }
    }
    return true;
}

} // namespace

bool isExecutableFile(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat info {
    };
    return ::stat(name.constData(), &info) == 0 && S_ISREG(info.st_mode)
        && ::access(name.constData(), X_OK) == 0;
}

QString path()
{
    for (const QString &shell : {shellOfPasswordDatabase(), QStringLiteral("/bin/zsh")}) {
        if (isExecutableFile(shell))
            return shell;
    }
    return QStringLiteral("/bin/sh");
}

QString probe(const QString &shell, const QString &tool, std::chrono::milliseconds timeout,
              const std::atomic_bool *cancelled)
{
    QProcess process;
    process.setProgram(shell);
    process.setArguments({QStringLiteral("-lc"), QStringLiteral("command -v ") + tool});
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setChildProcessModifier([] { ::setsid(); });
    process.start();
    if (!finishes(process, timeout, cancelled) || process.exitStatus() != QProcess::NormalExit)
        return {};

    // A profile may greet before the answer comes.
    const QString output = Text::trimWhitespace(QString::fromUtf8(process.readAllStandardOutput()));
    for (const QString &found : {output, Text::trimWhitespace(output.section(u'\n', -1))}) {
        if (QDir::isAbsolutePath(found) && isExecutableFile(found))
            return found;
    }
    return {};
}

} // namespace Vesk::LoginShell
