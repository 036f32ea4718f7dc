#include "ui/controls/SystemColorScheme.h"

#include "core/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace Vesk
{

namespace
{

using namespace Qt::StringLiterals;

QString appearanceGroup()
{
    return u"org.freedesktop.appearance"_s;
}
QString colorSchemeKey()
{
    return u"color-scheme"_s;
}

} // namespace

SystemColorScheme::SystemColorScheme(QObject *parent)
    : QObject(parent)
{
    qGuiApp->installEventFilter(this);
    askPortal();
}

bool SystemColorScheme::dark() const
{
    if (m_preference != Preference::None)
        return m_preference == Preference::Dark;
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
}

bool SystemColorScheme::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qGuiApp)
        Q_EMIT changed();
    return false;
}

void SystemColorScheme::askPortal()
{
    auto bus = sessionBus();
    if (!bus.isConnected())
        return;
    const auto path = u"/org/freedesktop/portal/desktop"_s;
    const auto interface = u"org.freedesktop.portal.Settings"_s;
    // No service name: with one, connecting would wait for the name's owner.
    bus.connect(QString(), path, interface, u"SettingChanged"_s, this,
                SLOT(onSettingChanged(QString, QString, QDBusVariant)));
    auto message =
        QDBusMessage::createMethodCall(u"org.freedesktop.portal.Desktop"_s, path, interface, u"Read"_s);
    message << appearanceGroup() << colorSchemeKey();
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *call) {
        call->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *call;
        if (reply.isValid())
            notePreference(reply.value().variant());
    });
}

void SystemColorScheme::onSettingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (group == appearanceGroup() && key == colorSchemeKey())
        notePreference(value.variant());
}

void SystemColorScheme::notePreference(const QVariant &value)
{
    // Older portals wrap the number in one variant more.
    const QVariant inner = value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value;
    const auto number = inner.toUInt();
    const auto preference = number == 1 ? Preference::Dark
        : number == 2                   ? Preference::Light
                                        : Preference::None;
    if (preference == m_preference)
        return;
    m_preference = preference;
    Q_EMIT changed();
}

} // namespace Vesk
