// Makes the window that shows the version control of a project.
#pragma once

#include <QString>

#include <functional>
#include <memory>

class QQmlEngine;
class QQuickWindow;

namespace Vesk
{

class Runtime;

/** What the window cannot know by itself. */
struct VersionWindowSetting {
    int lane = 0;                                                  ///< the project's colour
    std::function<void(const QString &sessionKey)> showSession {}; ///< brings a session into view
};

/** A hidden window for a project of the catalog; null, with the reasons in the log, when it cannot be made.
 */
[[nodiscard]] std::unique_ptr<QQuickWindow> createVersionWindow(QQmlEngine &engine, Runtime &runtime,
                                                                const QString &alias,
                                                                VersionWindowSetting setting = {});

} // namespace Vesk
