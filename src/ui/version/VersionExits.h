// Where the window of a project's version control leads.
#pragma once

#include <QString>

#include <functional>

namespace Vesk
{

/** Roads out of the window; an empty one leads nowhere. */
struct VersionExits {
    std::function<void(const QString &sessionKey)> showSession {}; ///< brings a session into view
    std::function<void(const QString &alias)> showProject {}; ///< opens the same window of another project
};

} // namespace Vesk
