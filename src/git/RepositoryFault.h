// Why git finds no work tree in a folder.
#pragma once

#include "base/Result.h"

#include <QString>

namespace Vesk
{

/**
 * Told by what lies in the folder and above it, whatever language git speaks. NotFound when there is no trace
 * of a repository; else Unreadable, with a sentence for people or with git's own `words`.
 */
[[nodiscard]] Error repositoryFault(const QString &folder, const QString &words);

} // namespace Vesk
