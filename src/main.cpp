// Process entry: one instance, the delegate, the window.
#include "app/AppDelegate.h"
#include "app/SingleInstance.h"
#include "ui/controls/InstallUi.h"
#include "ui/shell/MainWindow.h"

#include <QDir>
#include <QGuiApplication>
#include <QProcessEnvironment>
#include <QQmlEngine>
#include <QQuickWindow>

#include <cstdio>

int main(int argc, char **argv)
{
    using namespace Vesk;
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("vesk"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Vesk"));
    QGuiApplication::setApplicationVersion(QStringLiteral(VESK_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("vesk"));
    QGuiApplication::setQuitOnLastWindowClosed(false);

    const auto paths =
        AppPaths::fromEnvironment(QProcessEnvironment::systemEnvironment(), QDir::currentPath());
    SingleInstance instance(paths.appSupportDir());
    if (instance.claim() == SingleInstance::Role::Second) {
        instance.askFirst([](bool answered) {
            std::fputs(answered ? "Vesk is already running; its window was brought up.\n"
                                : "Vesk is already running, but it does not answer.\n",
                       stderr);
            QCoreApplication::exit(answered ? 0 : 1);
        });
        return QGuiApplication::exec();
    }

    AppDelegate delegate(paths);
    delegate.applicationDidFinishLaunching();
    QQmlEngine engine;
    installUi(engine);
    const auto window = createMainWindow(engine, delegate.runtime());
    if (!window)
        return 1;
    delegate.runtime().openMainWindow();
    instance.onRaise = delegate.runtime().openMainWindow;
    return QGuiApplication::exec();
}
