// Reading the files of an issue folder.
#pragma once

#include "base/Result.h"

#include <QString>

namespace Vesk::IssueFile
{

/** More than any text that people or agents write; what is larger is not read. */
inline constexpr qsizetype maxBytes = 32 * 1024 * 1024;

/** The whole text. Malformed when it is not UTF-8 throughout, else as readFile(). */
[[nodiscard]] Result<QString> read(const QString &path);

/** Why a file could not be read, for the person. */
[[nodiscard]] QString problem(const Error &error);

} // namespace Vesk::IssueFile
