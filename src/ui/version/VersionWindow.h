// Makes the window that shows the version control of a project.
#pragma once

#include "ui/version/VersionExits.h"

#include <QString>

#include <memory>

class QQmlEngine;
class QQuickWindow;

namespace Vesk
{

class Runtime;

/** A hidden window for a project of the catalog; null, with the reasons in the log, when it cannot be made.
 */
[[nodiscard]] std::unique_ptr<QQuickWindow>
createVersionWindow(QQmlEngine &engine, Runtime &runtime, const QString &alias, VersionExits exits = {});

} // namespace Vesk
