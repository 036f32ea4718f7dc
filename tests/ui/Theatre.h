// The main window on a stage, driven by keys and the mouse.
#pragma once

#include "ui/FindItem.h"
#include "ui/ShellStage.h"

#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

class QMimeData;

namespace Vesk
{
class Workspace;
}

namespace Vesk::Test
{

/** In its window. */
[[nodiscard]] QPoint centreOf(const QQuickItem &item);
/** Drags this over the window and lets it go; whether it was taken. */
bool drop(QQuickWindow &window, const QMimeData &data, const QPoint &at);

/** A window on a stage. It notes what the QML engine warns of. */
class Theatre
{
public:
    using Maker = std::function<std::unique_ptr<QQuickWindow>(QQmlEngine &engine)>;

    explicit Theatre(ShellStage &stage); ///< the main window
    explicit Theatre(const Maker &make); ///< another one
    ~Theatre();

    [[nodiscard]] QQuickWindow *window() const { return m_window.get(); }
    [[nodiscard]] Workspace &workspace() const;
    [[nodiscard]] const QStringList &warnings() const { return m_warnings; }

    /** The visible item with this text, a button's or a label's. */
    [[nodiscard]] QQuickItem *withText(const QString &text) const;
    [[nodiscard]] bool shows(const QString &text) const { return withText(text) != nullptr; }
    [[nodiscard]] QQuickItem *withName(const QString &objectName) const;
    [[nodiscard]] QQuickItem *tab(const QString &title) const;
    /** The row of this project or session. */
    [[nodiscard]] QQuickItem *sidebarRow(const QString &title) const;
    /** The composer that has the keyboard; null when it is elsewhere. */
    [[nodiscard]] QQuickItem *composer() const;
    /** "a b*|>c*": the tabs of the panes in reading order, what each shows, and which has the focus. */
    [[nodiscard]] QString panes() const;
    /** A place in a pane, from 0, 0 at its upper left to 1, 1. */
    [[nodiscard]] QPoint inPane(int row, double x, double y) const;

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    void type(const QString &ascii) const;
    void click(const QString &text, Qt::MouseButton button = Qt::LeftButton) const;
    void click(const QQuickItem *item, Qt::MouseButton button = Qt::LeftButton) const;
    /** Takes the pointer, with its button down, from one place to another; over several places in between. */
    void drag(const QPoint &from, const QPoint &to, bool letGo = true) const;
    /** Leaves a picture in the folder that VESK_SHOTS names, if it does. */
    void picture(const QString &name) const;

private:
    void prepare();
    void raise() const;

    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    QStringList m_warnings;
};

} // namespace Vesk::Test
