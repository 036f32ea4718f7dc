#include "ui/controls/InstallUi.h"

#include "ui/controls/IconProvider.h"
#include "ui/controls/Theme.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickWindow>

namespace Vesk
{

using namespace Qt::StringLiterals;

void installUi(QQmlEngine &engine)
{
    QGuiApplication::setFont(Theme::shared().ui());
    // Whole-pixel screens get the sharper glyphs of the platform; in between, those that scale.
    if (const auto ratio = qGuiApp->devicePixelRatio(); qFuzzyCompare(ratio, std::round(ratio)))
        QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    engine.addImportPath(u"qrc:/qt/qml"_s);
    engine.addImageProvider(u"icon"_s, new IconProvider);
    engine.addImageProvider(u"shadow"_s, new ShadowProvider);
}

} // namespace Vesk
