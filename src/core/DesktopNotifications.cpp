#include "core/DesktopNotifications.h"

#include "core/AuditLogger.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int expiresByTheDesktop = -1;
constexpr int expiresNever = 0;

QString noticePath()
{
    return u"/org/freedesktop/Notifications"_s;
}

QString noticeInterface()
{
    return u"org.freedesktop.Notifications"_s;
}

QDBusMessage noticeCall(const QString &method)
{
    return QDBusMessage::createMethodCall(noticeInterface(), noticePath(), noticeInterface(), method);
}

} // namespace

DesktopNotifications::DesktopNotifications(AuditLogger &auditLogger, BusSource bus, QObject *parent)
    : QObject(parent)
    , m_auditLogger(auditLogger)
    , m_bus(std::move(bus))
{
}

DesktopNotifications::~DesktopNotifications()
{
    closeAll();
}

void DesktopNotifications::show(const QString &key, const DesktopNotice &notice)
{
    Slot &slot = m_slots[key];
    slot.wanted = notice;
    slot.closeWanted = false;
    if (m_readiness == Readiness::Ready)
        advance(key);
    else if (m_readiness != Readiness::Asking)
        prepare();
}

void DesktopNotifications::close(const QString &key)
{
    const auto slot = m_slots.find(key);
    if (slot == m_slots.end())
        return;
    slot->wanted.reset();
    slot->closeWanted = true;
    advance(key);
}

void DesktopNotifications::closeAll()
{
    for (const QString &key : m_slots.keys())
        close(key);
}

void DesktopNotifications::prepare()
{
    QDBusConnection bus = m_bus();
    if (!bus.isConnected()) {
        noteAbsent(u"no D-Bus"_s);
        return;
    }
    if (m_readiness == Readiness::Untried) {
        // No service name: with one, connecting would wait for the name's owner.
        const QString path = noticePath();
        const QString interface = noticeInterface();
        bus.connect(QString(), path, interface, u"ActionInvoked"_s, this,
                    SLOT(onActionInvoked(uint, QString)));
        bus.connect(QString(), path, interface, u"ActivationToken"_s, this,
                    SLOT(onActivationToken(uint, QString)));
        bus.connect(QString(), path, interface, u"NotificationClosed"_s, this,
                    SLOT(onNotificationClosed(uint, uint)));
    }
    m_readiness = Readiness::Asking;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(noticeCall(u"GetCapabilities"_s)), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *call) {
        call->deleteLater();
        const QDBusPendingReply<QStringList> reply = *call;
        if (reply.isError())
            noteAbsent(reply.error().name() + u": "_s + reply.error().message());
        else
            onCapabilities(reply.value());
    });
}

void DesktopNotifications::onCapabilities(const QStringList &capabilities)
{
    m_readiness = Readiness::Ready;
    m_readsMarkup = capabilities.contains(u"body-markup"_s);
    for (const QString &key : m_slots.keys())
        advance(key);
}

void DesktopNotifications::noteAbsent(const QString &reason)
{
    m_readiness = Readiness::Absent; // the next notice asks again: a service may have come up
    m_slots.clear();
    if (!std::exchange(m_saidUnavailable, true))
        m_auditLogger.log(AuditEvent::info(u"desktop notifications unavailable: "_s + reason));
}

void DesktopNotifications::advance(const QString &key)
{
    const auto slot = m_slots.find(key);
    if (slot == m_slots.end() || slot->asking)
        return;
    if (slot->wanted && m_readiness == Readiness::Ready) {
        slot->asking = true;
        const DesktopNotice notice = *std::exchange(slot->wanted, std::nullopt);
        send(key, notice);
    } else if (slot->closeWanted) {
        if (slot->id != 0)
            closeShown(slot->id);
        m_slots.erase(slot);
    }
}

void DesktopNotifications::closeShown(uint id)
{
    QDBusMessage call = noticeCall(u"CloseNotification"_s);
    call << id;
    m_bus().send(call);
}

void DesktopNotifications::send(const QString &key, const DesktopNotice &notice)
{
    QDBusMessage call = noticeCall(u"Notify"_s);
    const QVariantMap hints {{u"desktop-entry"_s, u"vesk"_s},
                             {u"category"_s, notice.category},
                             {u"sound-name"_s, notice.sound},
                             {u"resident"_s, notice.stays},
                             {u"urgency"_s, QVariant::fromValue<uchar>(1)}};
    call << u"Vesk"_s << m_slots.value(key).id << u"vesk"_s << notice.title
         << (m_readsMarkup ? notice.body.toHtmlEscaped() : notice.body)
         << QStringList {u"default"_s, u"가기"_s} << hints
         << (notice.stays ? expiresNever : expiresByTheDesktop);
    auto *watcher = new QDBusPendingCallWatcher(m_bus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, key](QDBusPendingCallWatcher *done) {
        done->deleteLater();
        const QDBusPendingReply<uint> reply = *done;
        if (reply.isError())
            noteAbsent(reply.error().name() + u": "_s + reply.error().message());
        else
            onAnswered(key, reply.value());
    });
}

void DesktopNotifications::onAnswered(const QString &key, uint id)
{
    const auto slot = m_slots.find(key);
    if (slot == m_slots.end()) {
        closeShown(id); // given up meanwhile
        return;
    }
    slot->id = id;
    slot->asking = false;
    advance(key);
}

QString DesktopNotifications::keyOf(uint id) const
{
    for (auto slot = m_slots.begin(); slot != m_slots.end(); ++slot)
        if (id != 0 && slot->id == id)
            return slot.key();
    return {};
}

void DesktopNotifications::onActionInvoked(uint id, const QString &action)
{
    const QString key = keyOf(id);
    const QString token = id == m_tokenId ? std::exchange(m_token, {}) : QString();
    if (!key.isEmpty() && action == "default"_L1 && onInvoked)
        onInvoked(key, token);
}

void DesktopNotifications::onActivationToken(uint id, const QString &token)
{
    // Comes before the action that it belongs to.
    m_tokenId = id;
    m_token = token;
}

void DesktopNotifications::onNotificationClosed(uint id, uint /*reason*/)
{
    const QString key = keyOf(id);
    const auto slot = m_slots.find(key);
    if (slot == m_slots.end())
        return;
    slot->id = 0;
    if (!slot->asking && !slot->wanted)
        m_slots.erase(slot);
}

} // namespace Vesk
