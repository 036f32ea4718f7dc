#include "core/LogindInhibitor.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>

#include <utility>

namespace Vesk
{

using namespace Qt::StringLiterals;

AcquireSleepInhibition logindIdleInhibition(std::function<QDBusConnection()> bus)
{
    return [bus = std::move(bus)](QObject *context, const QString &reason,
                                  std::function<void(Result<SleepInhibition>)> done) {
        const QDBusConnection connection = bus();
        if (!connection.isConnected()) {
            done(failure(ErrorKind::Unavailable, u"no D-Bus: "_s + connection.lastError().message()));
            return;
        }
        QDBusMessage call =
            QDBusMessage::createMethodCall(u"org.freedesktop.login1"_s, u"/org/freedesktop/login1"_s,
                                           u"org.freedesktop.login1.Manager"_s, u"Inhibit"_s);
        call << u"idle"_s << u"Vesk"_s << reason << u"block"_s;
        auto *watcher = new QDBusPendingCallWatcher(connection.asyncCall(call), context);
        QObject::connect(
            watcher, &QDBusPendingCallWatcher::finished, context, [watcher, done = std::move(done)] {
                watcher->deleteLater();
                const QDBusPendingReply<QDBusUnixFileDescriptor> reply = *watcher;
                if (reply.isError())
                    done(failure(ErrorKind::Unavailable,
                                 reply.error().name() + u": "_s + reply.error().message()));
                else if (!reply.value().isValid())
                    done(failure(ErrorKind::Unavailable, u"logind gave no descriptor"_s));
                else
                    done(SleepInhibition(std::make_shared<QDBusUnixFileDescriptor>(reply.value())));
            });
    };
}

} // namespace Vesk
