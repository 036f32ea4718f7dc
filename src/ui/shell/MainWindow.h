// The main window: its view models and its QML, put together.
#pragma once

#include <memory>

class QQmlEngine;
class QQuickWindow;

namespace Vesk
{

class Runtime;

/**
 * Makes the window, hidden, and sets Runtime::openMainWindow, which shows it and brings it to the front. The
 * engine must have been through installUi(). Null, with the reasons in the log, when the QML cannot be
 * loaded.
 *
 * The window is to be destroyed before the engine and the runtime.
 */
[[nodiscard]] std::unique_ptr<QQuickWindow> createMainWindow(QQmlEngine &engine, Runtime &runtime);

} // namespace Vesk
