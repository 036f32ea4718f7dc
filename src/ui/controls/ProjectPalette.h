// The colours that a project can have: the eight lanes of the theme.
#pragma once

#include "core/ProjectCatalog.h"

#include <QColor>
#include <QString>
#include <QStringList>

namespace Vesk::ProjectPalette
{

inline constexpr int laneCount = 8;

/** What is written into the catalog for a lane (its colour in the dark theme). */
[[nodiscard]] QString hexForLane(int lane);

/** The lane that a stored colour stands for, -1 for a colour that is none of them. */
[[nodiscard]] int laneForHex(const QString &hex);

/** The lane that the project at `position` is shown in: its stored one, its position's without a stored
   colour, -1 for a colour of the user's own. */
[[nodiscard]] int laneOf(const ProjectCatalogEntry &entry, qsizetype position);

/** What a project is shown in. */
struct ProjectColor {
    int lane = 0;    ///< -1 for a colour of the user's own
    QColor color {}; ///< that one

    bool operator==(const ProjectColor &) const = default;
};

/** That of the project by its name; the first lane's for one that is not there. */
[[nodiscard]] ProjectColor colorOf(const QList<ProjectCatalogEntry> &entries, const QString &alias);

/** The lane for the next project: the first that none has, else by its position. */
[[nodiscard]] int nextLane(const QList<ProjectCatalogEntry> &entries);

/** `path` with the home folder as "~". */
[[nodiscard]] QString shortenedPath(const QString &path, const QString &home);

} // namespace Vesk::ProjectPalette
