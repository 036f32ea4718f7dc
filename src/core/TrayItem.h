// An item in the desktop's tray with a menu, by the StatusNotifierItem protocol (org.kde.StatusNotifierItem,
// whose menu is com.canonical.dbusmenu). Spoken here and not by Qt's own class, which needs the widgets at
// every start.
#pragma once

#include "core/SessionBus.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace Vesk
{

class TrayItemService;
class TrayMenuService;

/** One size of the icon: ARGB with 32 bits a pixel in network byte order. */
struct TrayPicture {
    int width = 0;
    int height = 0;
    QByteArray argb;

    bool operator==(const TrayPicture &) const = default;
};

/** What the item shows. */
struct TrayFace {
    QList<TrayPicture> pictures;
    QString toolTip;
    bool needsAttention = false;

    bool operator==(const TrayFace &) const = default;
};

/** One line of the menu. A heading cannot be chosen. */
struct TrayMenuEntry {
    enum class Kind { Action, Heading, Separator };

    Kind kind = Kind::Action;
    QString key; ///< unique among the actions; given back when it is chosen
    QString label;

    bool operator==(const TrayMenuEntry &) const = default;
};

/**
 * Where the desktop has a tray the item is in it, also when the tray comes or comes back later; elsewhere
 * nothing happens. No call waits for an answer.
 */
class TrayItem : public QObject
{
    Q_OBJECT

public:
    /** The menu is asked for whenever the desktop is about to show it. */
    explicit TrayItem(std::function<QList<TrayMenuEntry>()> menu, BusSource bus = &sessionBus,
                      QObject *parent = nullptr);
    ~TrayItem() override;

    void setFace(const TrayFace &face);
    /** Tells the desktop that the menu's lines are others now. */
    void noteMenuChanged();

    /** There is a tray, and the item is in it. */
    [[nodiscard]] bool isShown() const { return m_shown; }

    /** The item itself was clicked. The token lets a window come to the front; it may be empty. */
    std::function<void(const QString &activationToken)> onActivated;
    std::function<void(const QString &key, const QString &activationToken)> onTriggered;

Q_SIGNALS:
    void shownChanged();

private Q_SLOTS:
    void onWatcherOwnerChanged(const QString &name, const QString &before, const QString &after);
    void askForHost();

private:
    void registerWithWatcher();
    void setShown(bool shown);

    QDBusConnection m_bus;
    std::unique_ptr<TrayItemService> m_item;
    std::unique_ptr<TrayMenuService> m_menu;
    bool m_shown = false;
};

} // namespace Vesk
