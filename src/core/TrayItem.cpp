#include "core/TrayItem.h"

#include "core/TrayServices_p.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

QString watcherName()
{
    return u"org.kde.StatusNotifierWatcher"_s;
}

QString watcherPath()
{
    return u"/StatusNotifierWatcher"_s;
}

QString itemPath()
{
    return u"/StatusNotifierItem"_s;
}

} // namespace

TrayItem::TrayItem(std::function<QList<TrayMenuEntry>()> menu, BusSource bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus())
    , m_item(std::make_unique<TrayItemService>())
    , m_menu(std::make_unique<TrayMenuService>(std::move(menu)))
{
    m_item->onActivate = [this] {
        if (onActivated)
            onActivated(m_item->takeToken());
    };
    m_menu->onTriggered = [this](const QString &key) {
        if (onTriggered)
            onTriggered(key, m_item->takeToken());
    };
    if (!m_bus.isConnected())
        return;
    registerTrayTypes();
    constexpr auto everything = QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals
        | QDBusConnection::ExportAllProperties;
    m_bus.registerObject(itemPath(), m_item.get(), everything);
    m_bus.registerObject(m_item->menu().path(), m_menu.get(), everything);
    // No service names: with one, connecting would wait for the name's owner.
    m_bus.connect(QString(), u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"NameOwnerChanged"_s,
                  {watcherName()}, u"sss"_s, this, SLOT(onWatcherOwnerChanged(QString, QString, QString)));
    for (const QString &signal : {u"StatusNotifierHostRegistered"_s, u"StatusNotifierHostUnregistered"_s})
        m_bus.connect(QString(), watcherPath(), watcherName(), signal, this, SLOT(askForHost()));
    registerWithWatcher();
}

TrayItem::~TrayItem()
{
    if (!m_bus.isConnected())
        return;
    m_bus.unregisterObject(itemPath());
    m_bus.unregisterObject(m_item->menu().path());
}

void TrayItem::setFace(const TrayFace &face)
{
    m_item->setFace(face);
}

void TrayItem::noteMenuChanged()
{
    m_menu->noteChanged();
}

void TrayItem::onWatcherOwnerChanged(const QString & /*name*/, const QString & /*before*/,
                                     const QString &after)
{
    if (after.isEmpty())
        setShown(false);
    else
        registerWithWatcher();
}

void TrayItem::registerWithWatcher()
{
    auto call = QDBusMessage::createMethodCall(watcherName(), watcherPath(), watcherName(),
                                               u"RegisterStatusNotifierItem"_s);
    call.setAutoStartService(false);
    call << itemPath(); // a path: the watcher then takes the bus name from the call
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *done) {
        done->deleteLater();
        if (!done->isError())
            askForHost();
    });
}

void TrayItem::askForHost()
{
    // A watcher alone draws nothing.
    auto call = QDBusMessage::createMethodCall(watcherName(), watcherPath(),
                                               u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    call.setAutoStartService(false);
    call << watcherName() << u"IsStatusNotifierHostRegistered"_s;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *done) {
        done->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *done;
        setShown(!reply.isError() && reply.value().variant().toBool());
    });
}

void TrayItem::setShown(bool shown)
{
    if (std::exchange(m_shown, shown) != shown)
        Q_EMIT shownChanged();
}

} // namespace Vesk
