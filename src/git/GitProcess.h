// Every call of git goes through here: no prompt, no lock, no full pipe, and no child beyond its time.
#pragma once

#include "git/GitCancel.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <memory>
#include <optional>

namespace Vesk::GitProcess
{

/** The one code that stands for a call that took too long. */
inline constexpr int timedOutCode = 124;

/** One call, as values. */
struct Call {
    QString program {};
    QStringList arguments {}; ///< paths as GitPath::decode() gives them
    QString cwd {};
    std::optional<QByteArray> input {}; ///< without it the child has this program's own
    std::optional<std::chrono::milliseconds> timeout {};
    QByteArrayList environment {}; ///< "NAME=value"; empty for what GitEnvironment::base() makes of ours
    std::shared_ptr<const GitCancel> cancel {};
};

/** The end of a call, with all that the child wrote. */
struct Output {
    int code = 0; ///< exit status; timedOutCode; non-zero also when the program could not be started
    QString out;  ///< empty when it is no UTF-8
    QString err;  ///< what the child said, or why it did not start
};

/** The end of a call, with the beginning of what the child wrote. */
struct CappedOutput {
    int code = 0;
    QByteArray out;
    qint64 totalOutputBytes = 0; ///< how much there was
    QString err;
};

/** The first candidate that is an executable file, else what a login shell says of `tool`. Blocks. */
[[nodiscard]] std::optional<QString> resolve(const QString &tool, const QStringList &candidates);

/** Where git is, looked for until it has been found once. Blocks. */
[[nodiscard]] std::optional<QString> gitURL();

/** Runs to the end and reads everything. Blocks, so for pool threads. Leaves no file behind. */
[[nodiscard]] Output run(const Call &call);

/** The same, but reads at most `maxOutputBytes`: memory stays bounded whatever the child writes. */
[[nodiscard]] CappedOutput runCapped(const Call &call, qint64 maxOutputBytes);

/** What people read when there is no git. */
[[nodiscard]] QString notFoundMessage();

/** What people read of a call that failed: its error text, else "git <command> 실패" with the code. At most
   300 bytes of UTF-8. */
[[nodiscard]] QString failureText(const QString &error, const QString &command, int code);

} // namespace Vesk::GitProcess
