// A child in a session of its own, waited for on the thread that started it.
#pragma once

#include "git/GitCancel.h"

#include <QByteArrayList>
#include <QString>

#include <chrono>
#include <optional>

namespace Vesk
{

/** What the child is given. The descriptors stay the caller's. */
struct GitChildStart {
    QByteArrayList command; ///< the program's path, then its arguments
    QByteArrayList environment;
    QByteArray folder;
    int input = 0; ///< 0 hands on the program's own
    int output = -1;
    int error = -1;
};

/** How it ended. */
struct GitChildEnd {
    enum class Reason { Exited, TimedOut, Cancelled, NotStarted };

    Reason reason = Reason::NotStarted;
    int code = 0; ///< exit status, or 128 and the signal's number; for NotStarted the system's error
};

/**
 * Starts the child and waits until it has ended. After `timeout`, or when `cancel` asks for it, the child and
 * all that it started are asked to end, and soon after made to.
 */
[[nodiscard]] GitChildEnd runGitChild(const GitChildStart &start,
                                      std::optional<std::chrono::milliseconds> timeout,
                                      const GitCancel *cancel);

} // namespace Vesk
