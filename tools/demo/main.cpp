// vesk_demo [--unattended] [--shots FOLDER]: Vesk as it is, with the scripted agent in the place of claude.
#include "app/AppDelegate.h"
#include "DemoHome.h"
#include "DemoPlayer.h"
#include "ui/controls/InstallUi.h"
#include "ui/controls/Theme.h"
#include "ui/shell/MainWindow.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickWindow>

#include <cstdio>

int main(int argc, char **argv)
{
    using namespace Vesk;
    const QString folder = QFileInfo(QString::fromLocal8Bit(argv[0])).absolutePath();
    const Demo::DemoHome home(QDir::cleanPath(folder + QStringLiteral("/../scripted_agent/scripted_agent")));
    if (!home.isReady()) {
        std::fputs("The demonstration could not make its folders.\n", stderr);
        return 1;
    }
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("vesk-demo"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Vesk"));
    QGuiApplication::setQuitOnLastWindowClosed(true);

    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption unattended(QStringLiteral("unattended"),
                                        QStringLiteral("Answer the cards, print the transcript and end."));
    const QCommandLineOption shots(QStringLiteral("shots"), QStringLiteral("Save pictures there."),
                                   QStringLiteral("folder"));
    parser.addOptions({unattended, shots});
    parser.process(application);

    AppDelegate delegate(
        AppPaths::fromEnvironment(QProcessEnvironment::systemEnvironment(), QDir::currentPath()));
    delegate.applicationDidFinishLaunching();
    Runtime &runtime = delegate.runtime();
    for (const char *name : {"billing", "handbook"}) {
        const QString alias = QString::fromLatin1(name);
        runtime.upsertCatalogEntry({.alias = alias, .path = home.project(alias)});
    }

    QQmlEngine engine;
    installUi(engine);
    const auto window = createMainWindow(engine, runtime);
    if (!window)
        return 1;
    runtime.openMainWindow();
    ProjectChat *chat = runtime.newSession(QStringLiteral("billing"));
    runtime.newSession(QStringLiteral("handbook"));

    Demo::DemoPlayer player(*chat, *window, Theme::shared(),
                            {.unattended = parser.isSet(unattended), .shots = parser.value(shots)});
    QObject::connect(&player, &Demo::DemoPlayer::finished, &application, [&] {
        if (!parser.isSet(unattended))
            return;
        std::fputs(qUtf8Printable(player.transcript()), stdout);
        for (const QString &path : player.saved())
            std::printf("saved %s\n", qUtf8Printable(path));
        QCoreApplication::exit(0);
    });
    player.play();
    return QGuiApplication::exec();
}
