#include "ui/version/VersionWindow.h"

#include "core/UsageRecorder.h"
#include "ui/version/VersionView.h"

#include <QLoggingCategory>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

Q_LOGGING_CATEGORY(lcVersion, "vesk.version")

} // namespace

std::unique_ptr<QQuickWindow> createVersionWindow(QQmlEngine &engine, Runtime &runtime, const QString &alias,
                                                  VersionExits exits)
{
    auto view = std::make_unique<VersionView>(runtime, alias);
    view->exits = std::move(exits);
    QQmlComponent component(&engine, QUrl(u"qrc:/qt/qml/Vesk/Version/VersionWindow.qml"_s));
    // Qt 6.4 crashes when it is given properties for a component that could not be compiled.
    std::unique_ptr<QObject> object(component.isReady() ? component.createWithInitialProperties(
                                        {{u"view"_s, QVariant::fromValue(view.get())}})
                                                        : nullptr);
    std::unique_ptr<QQuickWindow> window(qobject_cast<QQuickWindow *>(object.get()));
    if (!window) {
        for (const QQmlError &error : component.errors())
            qCCritical(lcVersion).noquote() << error.toString();
        return nullptr;
    }
    static_cast<void>(object.release());
    QObject::connect(window.get(), &QWindow::activeChanged, view.get(),
                     [view = view.get(), window = window.get()] {
                         if (window->isActive() && view->state() != VersionView::State::Loading)
                             view->reload();
                     });
    view->reload();
    UsageRecorder::record(FeatureSignal::VersionWindowOpened);
    // Its last child: what the QML made goes first.
    view.release()->setParent(window.get());
    return window;
}

} // namespace Vesk
