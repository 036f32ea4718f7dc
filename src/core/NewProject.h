// The rules for adding a project: its alias and its folder.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace Vesk::NewProject
{

/** The folder's name without control characters; "name-2", "name-3", … while that is taken. */
[[nodiscard]] QString proposeAlias(const QString &folderPath, const QStringList &existingAliases);

/** Why this alias cannot be used, in the user's words; absent when it can. */
[[nodiscard]] std::optional<QString> validateAlias(const QString &alias, const QStringList &existingAliases);

/** Why this folder cannot be a project, in the user's words; absent when it can. Looks at the disk. */
[[nodiscard]] std::optional<QString> validateFolder(const QString &path);

} // namespace Vesk::NewProject
