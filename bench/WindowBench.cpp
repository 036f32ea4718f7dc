// Start, memory and stillness of the window, each against an empty Qt Quick window with the same modules.
//
// The program starts itself: a child with the argument "empty" or "vesk" shows that window, tells its parent
// over standard output when the first frame was there, and answers what it is asked on standard input.
#include "app/AppDelegate.h"
#include "bench/Conversation.h"
#include "bench/Rounds.h"
#include "sessions/ProjectChat.h"
#include "ui/controls/InstallUi.h"
#include "ui/shell/MainWindow.h"

#include <QDir>
#include <QGuiApplication>
#include <QProcess>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace
{

using namespace Vesk;

constexpr int startRounds = 9;
constexpr double startLimit = 1.5;
constexpr double memoryLimit = 2.5;
constexpr double idleLimitPercent = 1;
constexpr int idleSeconds = 10;
constexpr int settleMs = 3000; // what a start leaves to do is done by then
constexpr int sessionCount = 10;
constexpr int rowCount = 2000;

const char emptyWindow[] = R"(
import QtQuick
import QtQuick.Window
import QtQuick.Layouts
import QtQuick.Templates as T
Window { width: 1440; height: 900; title: "empty" }
)";

double privateMegabytes()
{
    // Proportional set size: shared library pages count by their share, so both windows are charged alike.
    QFile rollup(QStringLiteral("/proc/self/smaps_rollup"));
    if (!rollup.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : rollup.readAll().split('\n'))
        if (line.startsWith("Pss:"))
            return line.mid(4).trimmed().split(' ').first().toDouble() / 1024;
    return 0;
}

void say(const char *what, double value)
{
    std::printf("%s %.6f\n", what, value);
    std::fflush(stdout);
}

void fillSessions(Runtime &runtime)
{
    for (int session = 0; session < sessionCount; ++session) {
        ProjectChat *chat = runtime.newSession(QStringLiteral("bench"));
        if (!chat)
            return;
        chat->messages().reset(Bench::conversation(rowCount));
    }
}

void answerParent();

void measureIdle()
{
    const double start = Bench::processorSeconds();
    QTimer::singleShot(idleSeconds * 1000, [start] {
        say("idle", Bench::processorSeconds() - start);
        answerParent();
    });
}

/** Answers "memory" and "idle"; ends with its input. */
void answerParent()
{
    for (char command[32]; std::fscanf(stdin, "%31s", command) == 1;) {
        if (qstrcmp(command, "memory") == 0) {
            say("memory", privateMegabytes());
        } else if (qstrcmp(command, "idle") == 0) {
            QTimer::singleShot(settleMs, &measureIdle);
            return;
        }
    }
    QCoreApplication::quit();
}

int showWindow(QQuickWindow *window, const std::function<void()> &show)
{
    if (!window)
        return 1;
    QObject::connect(
        window, &QQuickWindow::frameSwapped, window,
        [] {
            say("shown", 0);
            QTimer::singleShot(settleMs, &answerParent);
        },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    show();
    return QGuiApplication::exec();
}

int runEmpty()
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(emptyWindow, {});
    const std::unique_ptr<QObject> root(component.create());
    auto *window = qobject_cast<QQuickWindow *>(root.get());
    return showWindow(window, [window] { window->show(); });
}

int runVesk(bool filled)
{
    const auto paths =
        AppPaths::fromEnvironment(QProcessEnvironment::systemEnvironment(), QDir::currentPath());
    AppDelegate delegate(paths);
    delegate.applicationDidFinishLaunching();
    if (filled) {
        delegate.runtime().upsertCatalogEntry({.alias = QStringLiteral("bench"), .path = QDir::homePath()});
        fillSessions(delegate.runtime());
    }
    QQmlEngine engine;
    installUi(engine);
    const auto window = createMainWindow(engine, delegate.runtime());
    return showWindow(window.get(), delegate.runtime().openMainWindow);
}

/** A child showing one of the windows, with a home of its own. */
class Child
{
public:
    explicit Child(const QString &mode)
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), m_home.path());
        for (const char *name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
            environment.insert(QString::fromLatin1(name), m_home.path() + u'/' + QString::fromLatin1(name));
        // As on the machine of a person who works with Vesk: the agent is where it is looked for first.
        QDir().mkpath(m_home.path() + QStringLiteral("/.local/bin"));
        QFile::link(QStringLiteral(VESK_SCRIPTED_AGENT),
                    m_home.path() + QStringLiteral("/.local/bin/claude"));
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_started = Bench::now();
        m_process.start(QCoreApplication::applicationFilePath(), {mode});
        m_shownAfter = wait("shown") < 0 ? -1 : Bench::now() - m_started;
    }
    ~Child()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    [[nodiscard]] double shownAfter() const { return m_shownAfter; }
    double ask(const char *what)
    {
        m_process.write(QByteArray(what) + '\n');
        m_process.waitForBytesWritten();
        return wait(what);
    }

private:
    double wait(const char *what)
    {
        while (m_process.canReadLine() || m_process.waitForReadyRead(60000)) {
            const auto words = m_process.readLine().trimmed().split(' ');
            if (words.size() == 2 && words[0] == what)
                return words[1].toDouble();
        }
        return -1;
    }

    QTemporaryDir m_home;
    QProcess m_process;
    double m_started = 0;
    double m_shownAfter = 0;
};

int runParent()
{
    const auto shown = [](const char *mode) { return Child(QString::fromLatin1(mode)).shownAfter() * 1000; };
    shown("empty");
    shown("vesk");
    std::vector<double> empty, vesk, ratios;
    for (int round = 0; round < startRounds; ++round) {
        empty.push_back(shown("empty"));
        vesk.push_back(shown("vesk"));
        ratios.push_back(vesk.back() / empty.back());
    }
    std::printf("window shown: %.0f ms, empty window: %.0f ms (medians of %d)\n", Bench::median(vesk),
                Bench::median(empty), startRounds);
    bool met = Bench::report("start against an empty window", Bench::median(ratios), "x", startLimit);

    // One after the other: side by side they would halve each other's share of the libraries' pages.
    const double emptyMemory = Child(QStringLiteral("empty")).ask("memory");
    Child filledChild(QStringLiteral("filled"));
    const double filledMemory = filledChild.ask("memory");
    std::printf("%d sessions of %d rows: %.1f MB, empty window: %.1f MB\n", sessionCount, rowCount,
                filledMemory, emptyMemory);
    met =
        Bench::report("memory against an empty window", filledMemory / emptyMemory, "x", memoryLimit) && met;

    const double busy = filledChild.ask("idle");
    return Bench::report("processor time of the still window", busy * 100 / idleSeconds, "%",
                         idleLimitPercent)
            && met
        ? 0
        : 1;
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    const QByteArray mode(argc > 1 ? argv[1] : "");
    if (mode == "empty")
        return runEmpty();
    if (mode == "vesk" || mode == "filled")
        return runVesk(mode == "filled");
    return runParent();
}
