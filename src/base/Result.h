// Errors as values: what every fallible function of Vesk returns.
#pragma once

#include <QString>

#include <tl/expected.hpp>

namespace Vesk
{

/** What a caller can branch on. The text of an Error is for the log; sentences for people are made where they
 * meet them. */
enum class ErrorKind {
    NotFound,    ///< the file, folder or entry is not there
    Unreadable,  ///< it is there and cannot be read (permission, input error, a folder in place of a file)
    Unwritable,  ///< a write, rename or permission change failed
    Malformed,   ///< the bytes are not what the format asks for
    TooLarge,    ///< beyond a stated cap
    Unavailable, ///< a service, program or bus is not there
};

struct Error {
    ErrorKind kind = ErrorKind::Unavailable;
    QString text; ///< for the log: what failed, on what, with the system's own reason
};

template <typename T>
using Result = tl::expected<T, Error>;

/** The error side of a Result: `return failure(ErrorKind::NotFound, path);` */
[[nodiscard]] inline tl::unexpected<Error> failure(ErrorKind kind, QString text)
{
    return tl::unexpected<Error>(Error {kind, std::move(text)});
}

} // namespace Vesk
