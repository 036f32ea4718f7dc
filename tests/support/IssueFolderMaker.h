// An issue folder as a project has one: three milestones, relations, a word of its own for a status.
#pragma once

#include <QString>

namespace Vesk::Test::IssueFolderMaker
{

/** Writes a file, and says so when it cannot. */
bool write(const QString &path, const QString &text);
[[nodiscard]] QString read(const QString &path);

/** Twenty issues, their board and rules. */
bool fill(const QString &folder);
/** So many small issues in ten milestones. */
bool fillMany(const QString &folder, int count);

} // namespace Vesk::Test::IssueFolderMaker
