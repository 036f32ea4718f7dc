// Finding the agent program on this machine.
#pragma once

#include "base/LoginShell.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace Vesk
{

namespace ClaudeCLI
{

/** How long a login shell may take over its profile before the probe gives up. */
inline constexpr std::chrono::milliseconds probeTimeout = LoginShell::probeTimeout;

/** Where the program is looked for, in order. */
[[nodiscard]] QStringList candidatePaths(const QString &home);

/** A regular file, after links, that this user may execute. */
[[nodiscard]] bool isExecutableFile(const QString &path);

/** The user's shell from the password database, else a shell that is there. */
[[nodiscard]] QString loginShell();

/** Asks a login shell for the program; empty when it knows none, fails, takes longer than `timeout` or
    `cancelled` becomes true. Blocks. */
[[nodiscard]] QString probeLoginShell(const QString &shell, std::chrono::milliseconds timeout = probeTimeout,
                                      const std::atomic_bool *cancelled = nullptr);

/** The program's path: the first candidate that is an executable file, else what the login shell says, else
    empty. Blocks. */
[[nodiscard]] QString resolveExecutable(const QString &home, const std::atomic_bool *cancelled = nullptr);

/** What a session says when the program is not there. */
[[nodiscard]] QString notInstalledMessage();

} // namespace ClaudeCLI

/** Resolves the program once, off the main thread, and keeps the answer for the life of the process. */
class ExecutableLocator : public QObject
{
    Q_OBJECT

public:
    /** Looks for the program at first need. */
    explicit ExecutableLocator(QObject *parent = nullptr);
    /** Knows the program already; an empty path stands for one that is not installed. */
    explicit ExecutableLocator(const QString &path, QObject *parent = nullptr);
    ~ExecutableLocator() override;

    /** Starts the search, unless it has been started. */
    void resolve();

    [[nodiscard]] bool isResolved() const { return m_path.has_value(); }
    /** Empty when not resolved or not installed. */
    [[nodiscard]] QString path() const { return m_path.value_or(QString()); }

    /** Calls `done` with the path, empty when there is no program: at once when it is known, else when it is.
       Not called after the death of `context`. */
    void whenResolved(QObject *context, std::function<void(const QString &pathOrEmpty)> done);

Q_SIGNALS:
    void resolved();

private:
    void setPath(const QString &path);

    std::optional<QString> m_path;
    std::shared_ptr<std::atomic_bool> m_cancelled; // set while a search runs
};

} // namespace Vesk
