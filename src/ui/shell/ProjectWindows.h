// The windows that belong to one project each: its issues, its version control.
#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <map>
#include <memory>
#include <utility>

class QQuickWindow;

namespace Vesk
{

class Runtime;

/**
 * Opens each window at most once for a project: asking again brings it to the front. A window that is closed
 * is destroyed; its place on the screen is remembered by kind. Removing a project closes its windows.
 */
class ProjectWindows : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the main window")

public:
    enum class Kind { Issues, Version };
    Q_ENUM(Kind)

    /** Makes a hidden window for a project; null, with the reasons in the log, when it cannot. */
    using Factory = std::function<std::unique_ptr<QQuickWindow>(const QString &alias)>;

    explicit ProjectWindows(Runtime &runtime, QObject *parent = nullptr);
    ~ProjectWindows() override;

    void setFactory(Kind kind, Factory factory);

    /** Shows the window of a project; nothing for a project that is not there. */
    Q_INVOKABLE void open(Vesk::ProjectWindows::Kind kind, const QString &alias);
    [[nodiscard]] QQuickWindow *find(Kind kind, const QString &alias) const;

private:
    using Key = std::pair<Kind, QString>;

    void follow(QQuickWindow &window, const Key &key);
    void closeRemoved();
    void place(QQuickWindow &window, Kind kind) const;

    Runtime &m_runtime;
    std::map<Kind, Factory> m_factories;
    std::map<Key, std::unique_ptr<QQuickWindow>> m_windows;
};

} // namespace Vesk
