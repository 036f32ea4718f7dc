#include "ui/shell/MainWindow.h"

#include "app/Runtime.h"
#include "ui/controls/ProjectPalette.h"
#include "ui/controls/Theme.h"
#include "ui/issues/IssuesView.h"
#include "ui/shell/AddProject.h"
#include "ui/shell/Attention.h"
#include "ui/shell/AuditView.h"
#include "ui/shell/Projects.h"
#include "ui/shell/ProjectWindows.h"
#include "ui/shell/ResumeView.h"
#include "ui/shell/Settings.h"
#include "ui/shell/ViewSettings.h"
#include "ui/shell/Workspace.h"
#include "ui/version/VersionWindow.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QLoggingCategory>
#include <QPointer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include <algorithm>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

Q_LOGGING_CATEGORY(lcUi, "vesk.ui")

constexpr int geometrySettlesMs = 500;

/** Not quit(), which would first close the window: that hides it, or asks. */
void endProgram()
{
    QCoreApplication::exit(0);
}

/** What the QML of the window stands on. */
struct WindowObjects : QObject {
    explicit WindowObjects(Runtime &runtime)
        : workspace(runtime)
        , projects(runtime)
        , addProject(projects)
        , view(runtime.preferences(), runtime.keepAwake())
        , audit(runtime)
        , settings(runtime, view)
        , attention(workspace, runtime)
        , resume(runtime)
        , windows(runtime)
    {
        geometrySettled.setSingleShot(true);
        geometrySettled.setInterval(geometrySettlesMs);
    }

    [[nodiscard]] QVariantMap properties()
    {
        return {{u"workspace"_s, QVariant::fromValue(&workspace)},
                {u"projects"_s, QVariant::fromValue(&projects)},
                {u"addProject"_s, QVariant::fromValue(&addProject)},
                {u"view"_s, QVariant::fromValue(&view)},
                {u"audit"_s, QVariant::fromValue(&audit)},
                {u"settings"_s, QVariant::fromValue(&settings)},
                {u"attention"_s, QVariant::fromValue(&attention)},
                {u"resume"_s, QVariant::fromValue(&resume)},
                {u"windows"_s, QVariant::fromValue(&windows)}};
    }

    void follow(QQuickWindow &window)
    {
        connect(&window, &QWindow::activeChanged, this,
                [this, &window] { workspace.setWindowActive(window.isActive()); });
        connect(&window, &QWindow::visibleChanged, this, [this](bool visible) {
            workspace.roster().setVisible(visible);
            attention.setWindowVisible(visible);
        });
        // The desktop is not asked for anything before the window is there.
        connect(&window, &QQuickWindow::frameSwapped, &attention, &Attention::begin,
                static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
        // Nor is the disk asked for what the panes held.
        connect(&window, &QQuickWindow::frameSwapped, &workspace, &Workspace::restoreConversations,
                static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
        connect(&attention, &Attention::endAsked, qApp, &endProgram, Qt::QueuedConnection);
        connect(&geometrySettled, &QTimer::timeout, this, [this, &window] {
            if (window.isVisible() && window.visibility() == QWindow::Windowed) {
                view.keepWindowGeometry(window.x(), window.y(), window.width(), window.height());
            }
        });
        const auto moved = [this] { geometrySettled.start(); };
        connect(&window, &QWindow::xChanged, this, moved);
        connect(&window, &QWindow::yChanged, this, moved);
        connect(&window, &QWindow::widthChanged, this, moved);
        connect(&window, &QWindow::heightChanged, this, moved);
    }

    Workspace workspace;
    Projects projects;
    AddProject addProject;
    ViewSettings view;
    AuditView audit;
    Settings settings;
    Attention attention;
    ResumeView resume;
    ProjectWindows windows;
    QTimer geometrySettled;
};

void followVersionWindows(WindowObjects &objects, QQmlEngine &engine, Runtime &runtime)
{
    const auto showSession = [&objects, &runtime](const QString &key) {
        objects.workspace.select(key);
        runtime.openMainWindow();
    };
    const auto showProject = [&objects](const QString &alias) {
        objects.windows.open(ProjectWindows::Kind::Version, alias);
    };
    objects.windows.setFactory(
        ProjectWindows::Kind::Version, [&engine, &runtime, showSession, showProject](const QString &alias) {
            return createVersionWindow(engine, runtime, alias,
                                       {.showSession = showSession, .showProject = showProject});
        });
}

} // namespace

std::unique_ptr<QQuickWindow> createMainWindow(QQmlEngine &engine, Runtime &runtime)
{
    auto objects = std::make_unique<WindowObjects>(runtime);
    followVersionWindows(*objects, engine, runtime);
    // The QML is read on a thread of the engine's; what the first frame needs of fonts is opened meanwhile.
    const QUrl url(u"qrc:/qt/qml/Vesk/Shell/MainWindow.qml"_s);
    const QQmlComponent ahead(&engine, url, QQmlComponent::Asynchronous);
    for (const QFont &font : {Theme::shared().ui(), Theme::shared().uiBold()})
        (void)QFontMetricsF(font).horizontalAdvance(u"가Ab"_s);
    QQmlComponent component(&engine, url);
    // Qt 6.4 crashes when it is given properties for a component that could not be compiled.
    std::unique_ptr<QObject> object(
        component.isReady() ? component.createWithInitialProperties(objects->properties()) : nullptr);
    std::unique_ptr<QQuickWindow> window(qobject_cast<QQuickWindow *>(object.get()));
    if (!window) {
        for (const QQmlError &error : component.errors()) {
            qCCritical(lcUi).noquote() << error.toString();
        }
        return nullptr;
    }
    static_cast<void>(object.release());
    window->setGeometry(objects->view.windowGeometry());
    objects->follow(*window);
    QObject::connect(&engine, &QQmlEngine::quit, window.get(), &endProgram, Qt::QueuedConnection);
    ProjectWindows &windows = objects->windows;
    windows.setFactory(ProjectWindows::Kind::Issues, [&engine, &runtime](const QString &alias) {
        return createIssuesWindow(engine, runtime, alias);
    });
    runtime.issues().openIssuesWindow = [shown = QPointer<ProjectWindows>(&windows)](const QString &alias) {
        if (shown) {
            shown->open(ProjectWindows::Kind::Issues, alias);
        }
    };
    // Its last child: what the QML made goes first.
    objects.release()->setParent(window.get());

    runtime.openMainWindow = [shown = QPointer<QQuickWindow>(window.get())] {
        if (shown) {
            if (shown->visibility() == QWindow::Minimized) {
                shown->showNormal();
            } else {
                shown->show();
            }
            shown->raise();
            shown->requestActivate();
        }
    };
    return window;
}

} // namespace Vesk
