// A new issue folder: its rules and its board.
#pragma once

#include <QString>

#include <tl/expected.hpp>

namespace Vesk::IssueScaffold
{

/** The rules file, for issues numbered "KEY-001". */
[[nodiscard]] QString readme(const QString &key);
/** A new issue of such a folder, without what its rules would have in it. */
[[nodiscard]] QString skeleton(const QString &key);
/** The board file, with no issue on it. */
[[nodiscard]] QString board(const QString &projectName);

/** The text as a prefix: ASCII letters and digits alone, in capitals. */
[[nodiscard]] QString normalizedKey(const QString &text);
/** A prefix for a project, from its name or the last part of its path; "ISS" when that gives none. */
[[nodiscard]] QString suggestedKey(const QString &name);

/** Makes the folder with both files and gives its path, or the sentence for the person who asked. What is
    there already stays as it is. What was made before a failure stays too. */
[[nodiscard]] tl::expected<QString, QString> create(const QString &projectPath, const QString &folderName,
                                                    const QString &key, const QString &projectName);

} // namespace Vesk::IssueScaffold
