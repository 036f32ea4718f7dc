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

/** A hidden window for a project of the catalog; null, with the reasons in the log, when it cannot be made.
    `showSession` brings a session into view. */
[[nodiscard]] std::unique_ptr<QQuickWindow>
createVersionWindow(QQmlEngine &engine, Runtime &runtime, const QString &alias,
                    std::function<void(const QString &sessionKey)> showSession = {});

} // namespace Vesk
