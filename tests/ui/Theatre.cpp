#include "ui/Theatre.h"

#include "ui/controls/InstallUi.h"
#include "ui/shell/MainWindow.h"
#include "ui/shell/Workspace.h"

#include <QDir>
#include <QDropEvent>
#include <QMimeData>
#include <QtTest>

namespace Vesk::Test
{

using namespace Qt::StringLiterals;

QPoint centreOf(const QQuickItem &item)
{
    return item.mapToScene({item.width() / 2, item.height() / 2}).toPoint();
}

bool drop(QQuickWindow &window, const QMimeData &data, const QPoint &at)
{
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window, &enter);
    if (!enter.isAccepted()) {
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(&window, &leave);
        return false;
    }
    QDropEvent dropped(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window, &dropped);
    return dropped.isAccepted();
}

Theatre::Theatre(ShellStage &stage)
{
    prepare();
    m_window = createMainWindow(m_engine, stage.runtime());
    if (m_window) {
        stage.runtime().openMainWindow();
        raise();
    }
}

Theatre::Theatre(const Maker &make)
{
    prepare();
    m_window = make(m_engine);
    if (m_window) {
        m_window->show();
        raise();
    }
}

void Theatre::prepare()
{
    QObject::connect(&m_engine, &QQmlEngine::warnings, [this](const QList<QQmlError> &errors) {
        for (const QQmlError &error : errors) {
            m_warnings.append(error.toString());
        }
    });
    installUi(m_engine);
}

void Theatre::raise() const
{
    m_window->resize(1440, 900);
    m_window->requestActivate();
    [[maybe_unused]] const bool active = QTest::qWaitForWindowActive(m_window.get());
}

Theatre::~Theatre() = default;

Workspace &Theatre::workspace() const
{
    return *m_window->property("workspace").value<Workspace *>();
}

QQuickItem *Theatre::withText(const QString &text) const
{
    return findItem(m_window->contentItem(),
                    [&text](const QQuickItem &item) { return item.property("text").toString() == text; });
}

QQuickItem *Theatre::withName(const QString &objectName) const
{
    return findItem(m_window->contentItem(),
                    [&objectName](const QQuickItem &item) { return item.objectName() == objectName; });
}

QQuickItem *Theatre::tab(const QString &title) const
{
    m_window->grabWindow(); // lays the tabs out
    return findItem(m_window->contentItem(), [&title](const QQuickItem &item) {
        return item.property("title") == title && item.property("accented").isValid();
    });
}

QQuickItem *Theatre::sidebarRow(const QString &title) const
{
    m_window->grabWindow();
    return findItem(m_window->contentItem(), [&title](const QQuickItem &item) {
        return item.property("title") == title && item.property("isProject").isValid();
    });
}

QQuickItem *Theatre::composer() const
{
    QQuickItem *item = m_window->activeFocusItem();
    return item && item->objectName() == u"composerText"_s ? item : nullptr;
}

QString Theatre::panes() const
{
    const Panes &all = *workspace().panes();
    QStringList panes;
    for (int row = 0; row < all.rowCount(); ++row) {
        const QModelIndex index = all.index(row);
        const auto *tabs = index.data(Panes::TabsRole).value<PaneTabs *>();
        QStringList titles;
        for (int tab = 0; tab < tabs->rowCount(); ++tab) {
            titles.append(tabs->index(tab).data().toString()
                          + (tab == index.data(Panes::ShownIndexRole) ? u"*"_s : u""_s));
        }
        panes.append((index.data(Panes::FocusedRole).toBool() ? u">"_s : u""_s) + titles.join(u' '));
    }
    return panes.join(u'|');
}

QPoint Theatre::inPane(int row, double x, double y) const
{
    const double left = 257; // the sidebar and its line
    const QRectF rect = workspace().panes()->index(row).data(Panes::PlaceRole).toRectF();
    return QPointF(left + rect.left() + x * rect.width(), rect.top() + y * rect.height()).toPoint();
}

void Theatre::press(int key, Qt::KeyboardModifiers modifiers) const
{
    QTest::keyClick(m_window.get(), static_cast<Qt::Key>(key), modifiers);
    QCoreApplication::processEvents();
}

void Theatre::type(const QString &ascii) const
{
    for (const char letter : ascii.toLatin1()) {
        QTest::keyClick(m_window.get(), letter);
    }
}

void Theatre::click(const QString &text, Qt::MouseButton button) const
{
    const QQuickItem *item = withText(text);
    QVERIFY2(item, qPrintable(u"nothing shows "_s + text));
    click(item, button);
}

void Theatre::click(const QQuickItem *item, Qt::MouseButton button) const
{
    QVERIFY(item);
    m_window->grabWindow(); // lays it out
    QTest::mouseClick(m_window.get(), button, {}, centreOf(*item));
    QCoreApplication::processEvents();
}

void Theatre::drag(const QPoint &from, const QPoint &to, bool letGo) const
{
    constexpr int steps = 8;
    QTest::mousePress(m_window.get(), Qt::LeftButton, {}, from);
    for (int step = 1; step <= steps; ++step) {
        QTest::mouseMove(m_window.get(), from + (to - from) * step / steps);
        QCoreApplication::processEvents();
    }
    if (letGo) {
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, to);
        QCoreApplication::processEvents();
    }
}

void Theatre::picture(const QString &name) const
{
    const QString folder = qEnvironmentVariable("VESK_SHOTS");
    if (!folder.isEmpty()) {
        QTest::qWait(200);
        QDir().mkpath(folder);
        m_window->grabWindow().save(folder + u'/' + name + u".png"_s);
    }
}

} // namespace Vesk::Test
