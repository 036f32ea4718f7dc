// Which folder holds a project's issues.
#pragma once

#include <QString>

#include <optional>

namespace Vesk
{
class Preferences;
}

namespace Vesk::IssueFolderPreference
{

/** Absent while none is chosen. `cwd` is the project's folder. */
[[nodiscard]] std::optional<QString> folder(const QString &cwd, const Preferences &store);

/** Chooses a folder; an absent or blank path takes the choice back. */
void setFolder(const std::optional<QString> &path, const QString &cwd, Preferences &store);

} // namespace Vesk::IssueFolderPreference
