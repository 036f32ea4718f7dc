#include "ui/shell/ProjectWindows.h"

#include "app/Runtime.h"
#include "ui/shell/ViewSettings.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QScreen>

#include <algorithm>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

QString geometryKey(ProjectWindows::Kind kind)
{
    return kind == ProjectWindows::Kind::Issues ? u"vesk.window.issues.geometry"_s
                                                : u"vesk.window.version.geometry"_s;
}

void bringUp(QQuickWindow &window)
{
    if (window.visibility() == QWindow::Minimized) {
        window.showNormal();
    } else {
        window.show();
    }
    window.raise();
    window.requestActivate();
}

} // namespace

ProjectWindows::ProjectWindows(Runtime &runtime, QObject *parent)
    : QObject(parent)
    , m_runtime(runtime)
{
    connect(&runtime, &Runtime::catalogEntriesChanged, this, &ProjectWindows::closeRemoved);
}

ProjectWindows::~ProjectWindows()
{
    // A window hides as it goes, and would be taken out of the list that is going with it.
    const auto going = std::exchange(m_windows, {});
}

void ProjectWindows::setFactory(Kind kind, Factory factory)
{
    m_factories[kind] = std::move(factory);
}

void ProjectWindows::open(Kind kind, const QString &alias)
{
    if (auto *window = find(kind, alias)) {
        bringUp(*window);
        return;
    }
    const auto &entries = m_runtime.catalogEntries();
    const bool known =
        std::any_of(entries.begin(), entries.end(), [&](const auto &entry) { return entry.alias == alias; });
    const auto factory = m_factories.find(kind);
    if (!known || factory == m_factories.end()) {
        return;
    }
    auto window = factory->second(alias);
    if (!window) {
        return;
    }
    const Key key {kind, alias};
    place(*window, kind);
    follow(*window, key);
    bringUp(*m_windows.insert_or_assign(key, std::move(window)).first->second);
}

QQuickWindow *ProjectWindows::find(Kind kind, const QString &alias) const
{
    const auto found = m_windows.find({kind, alias});
    return found == m_windows.end() ? nullptr : found->second.get();
}

void ProjectWindows::follow(QQuickWindow &window, const Key &key)
{
    connect(&window, &QWindow::visibleChanged, this, [this, key, &window](bool visible) {
        const auto found = m_windows.find(key);
        if (visible || found == m_windows.end()) {
            return;
        }
        if (window.visibility() != QWindow::Maximized && window.visibility() != QWindow::FullScreen) {
            m_runtime.preferences().setValue(geometryKey(key.first), window.geometry());
        }
        found->second.release()->deleteLater(); // this comes from its own signal
        m_windows.erase(found);
    });
}

void ProjectWindows::closeRemoved()
{
    const auto &entries = m_runtime.catalogEntries();
    QList<QQuickWindow *> gone;
    for (const auto &[key, window] : m_windows) {
        const bool known =
            std::any_of(entries.begin(), entries.end(),
                        [alias = key.second](const auto &entry) { return entry.alias == alias; });
        if (!known) {
            gone.append(window.get());
        }
    }
    for (auto *window : gone) {
        window->close();
    }
}

// Beside the one that is open already, not over it.
void ProjectWindows::place(QQuickWindow &window, Kind kind) const
{
    const auto remembered = m_runtime.preferences().value(geometryKey(kind)).toRect();
    QList<QRect> screens;
    for (const auto *screen : QGuiApplication::screens()) {
        screens.append(screen->availableGeometry());
    }
    const auto geometry =
        fittingGeometry(remembered.isEmpty() ? std::nullopt : std::optional(remembered), screens);
    const auto step = 28
        * static_cast<int>(std::count_if(m_windows.begin(), m_windows.end(),
                                         [kind](const auto &open) { return open.first.first == kind; }));
    window.setGeometry(geometry.translated(step, step));
}

} // namespace Vesk
