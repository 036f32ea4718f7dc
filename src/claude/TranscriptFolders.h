// Where the agent program keeps the transcripts of a project.
#pragma once

#include <QString>
#include <QStringList>

namespace Vesk::TranscriptFolders
{

/** The folder of all transcripts. */
[[nodiscard]] QString root(const QString &home);

/** The name of a project's folder as older versions write it: every "/", then every ".", becomes "-". */
[[nodiscard]] QString encodedName(const QString &projectPath);

/** As today's versions write it: every UTF-16 unit but ASCII letters and digits becomes "-". Beyond 200 units
    the name is cut there, and the program adds "-" and a hash of its own. */
[[nodiscard]] QString currentName(const QString &projectPath);

/** The folders under `root` that hold this project's transcripts, each once. Older versions went by the path
    as it was given, today's go by the real one. Reads the disk. */
[[nodiscard]] QStringList existing(const QString &root, const QString &projectPath);

} // namespace Vesk::TranscriptFolders
