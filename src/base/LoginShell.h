// Finding programs where the user's login shell finds them.
#pragma once

#include <QString>

#include <atomic>
#include <chrono>

namespace Vesk::LoginShell
{

/** How long a login shell may take over its profile before a probe gives up. */
inline constexpr std::chrono::milliseconds probeTimeout {10'000};

/** A regular file, after links, that this user may execute. */
[[nodiscard]] bool isExecutableFile(const QString &path);

/** The user's shell from the password database, else a shell that is there. */
[[nodiscard]] QString path();

/** Asks a login shell where `tool` is, a plain word; empty when it knows none, fails, takes longer than
    `timeout` or `cancelled` becomes true. Blocks. */
[[nodiscard]] QString probe(const QString &shell, const QString &tool,
                            std::chrono::milliseconds timeout = probeTimeout,
                            const std::atomic_bool *cancelled = nullptr);

} // namespace Vesk::LoginShell
