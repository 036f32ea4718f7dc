#include "core/DesktopNotifications.h"

#include "core/AuditLogger.h"
#include "support/PrivateBus.h"
#include "support/TestRegistry.h"

#include <QDBusConnection>
#include <QTemporaryDir>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

/** Plays the desktop: keeps what is shown, and can be clicked. */
class FakeDesktop : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Shown {
        QString title, body;
        QVariantMap hints;
        int timeout = 0;
    };

    QMap<uint, Shown> shown;
    QStringList capabilities {u"actions"_s, u"body"_s};
    int calls = 0;

public Q_SLOTS:
    QStringList GetCapabilities() { return capabilities; }
    uint Notify(const QString &, uint replaces, const QString &, const QString &title, const QString &body,
                const QStringList &, const QVariantMap &hints, int timeout)
    {
        ++calls;
        const uint id = replaces != 0 ? replaces : ++m_lastId;
        shown.insert(id, {title, body, hints, timeout});
        return id;
    }
    void CloseNotification(uint id)
    {
        if (shown.remove(id) > 0)
            Q_EMIT NotificationClosed(id, 3);
    }

Q_SIGNALS:
    void ActionInvoked(uint id, const QString &action);
    void ActivationToken(uint id, const QString &token);
    void NotificationClosed(uint id, uint reason);

private:
    uint m_lastId = 6;
};

DesktopNotice notice(const QString &title, bool stays = false)
{
    return {.title = title, .body = u"a <b> & c"_s, .category = u"x"_s, .sound = u"bell"_s, .stays = stays};
}

} // namespace

class DesktopNotificationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_bus = std::make_unique<Test::PrivateBus>();
        if (m_bus->address().isEmpty())
            QSKIP("no dbus-daemon");
    }

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_audit = std::make_unique<AuditLogger>(m_dir->filePath(u"audit.log"_s));
        m_desktop = std::make_unique<FakeDesktop>();
        auto server = QDBusConnection::connectToBus(m_bus->address(), u"vesk-test-desktop"_s);
        QVERIFY(server.registerObject(u"/org/freedesktop/Notifications"_s, m_desktop.get(),
                                      QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
        QVERIFY(server.registerService(u"org.freedesktop.Notifications"_s));
        m_notifications = std::make_unique<DesktopNotifications>(*m_audit, [this] {
            return QDBusConnection::connectToBus(m_bus->address(), u"vesk-test-notifier"_s);
        });
    }

    void cleanup()
    {
        m_notifications.reset();
        for (const QString &name : {u"vesk-test-desktop"_s, u"vesk-test-notifier"_s})
            QDBusConnection::disconnectFromBus(name);
    }

    void oneNoticePerKey()
    {
        m_notifications->show(u"a"_s, notice(u"first"_s));
        m_notifications->show(u"a"_s, notice(u"second"_s)); // before the service was ever asked
        m_notifications->show(u"b"_s, notice(u"other"_s, true));
        QTRY_COMPARE(titles(), (QStringList {u"second"_s, u"other"_s}));
        const auto a = m_desktop->shown.first();
        QCOMPARE(a.body, u"a <b> & c"_s);
        QCOMPARE(a.timeout, -1);
        QCOMPARE(a.hints.value(u"resident"_s).toBool(), false);
        QCOMPARE(a.hints.value(u"desktop-entry"_s).toString(), u"vesk"_s);
        QCOMPARE(m_desktop->shown.last().timeout, 0);
        QVERIFY(m_desktop->shown.last().hints.value(u"resident"_s).toBool());

        m_notifications->show(u"a"_s, notice(u"third"_s));
        m_notifications->show(u"a"_s, notice(u"fourth"_s)); // while the third is under way
        QTRY_COMPARE(titles(), (QStringList {u"fourth"_s, u"other"_s}));
        QVERIFY(m_desktop->calls <= 4); // fewer where the second was still under way
        m_notifications->close(u"a"_s);
        QTRY_COMPARE(titles(), QStringList {u"other"_s});
        m_notifications->close(u"nothing"_s);
        m_notifications->closeAll();
        QTRY_VERIFY(m_desktop->shown.isEmpty());
    }

    void whatIsClosedBeforeTheAnswerGoes()
    {
        m_notifications->show(u"a"_s, notice(u"a"_s));
        m_notifications->close(u"a"_s);
        m_notifications->show(u"b"_s, notice(u"b"_s));
        QTRY_COMPARE(titles(), QStringList {u"b"_s});
        QCOMPARE(m_desktop->calls, 1);
        m_notifications->show(u"c"_s, notice(u"c"_s));
        m_notifications->close(u"c"_s);
        QTRY_COMPARE(m_desktop->calls, 2);
        QTRY_COMPARE(titles(), QStringList {u"b"_s});
    }

    void aClickSaysWhichAndBringsAToken()
    {
        QStringList invoked;
        m_notifications->onInvoked = [&invoked](const QString &key, const QString &token) {
            invoked.append(key + u'/' + token);
        };
        m_desktop->capabilities.append(u"body-markup"_s);
        m_notifications->show(u"a"_s, notice(u"a"_s));
        m_notifications->show(u"b"_s, notice(u"b"_s));
        QTRY_COMPARE(titles().size(), 2);
        QCOMPARE(m_desktop->shown.first().body, u"a &lt;b&gt; &amp; c"_s);
        const QList<uint> ids = m_desktop->shown.keys();
        // A service may answer after it has shown: the id has to be known here before the click is.
        QTRY_COMPARE_WITH_TIMEOUT((Q_EMIT m_desktop->ActivationToken(ids.last(), u"t"_s),
                                   Q_EMIT m_desktop->ActionInvoked(ids.last(), u"default"_s),
                                   QTest::qWait(20), !invoked.isEmpty()),
                                  true, 60000);
        QCOMPARE(invoked.constFirst(), u"b/t"_s);
        invoked.clear();
        Q_EMIT m_desktop->ActionInvoked(4711, u"default"_s);
        Q_EMIT m_desktop->ActionInvoked(ids.last(), u"settings"_s);
        Q_EMIT m_desktop->ActionInvoked(ids.first(), u"default"_s);
        QTRY_VERIFY(invoked.contains(u"a/"_s));
        invoked.removeAll(u"b/t"_s); // clicks repeated above may come late
        QCOMPARE(invoked, QStringList {u"a/"_s});

        // Swept away by the person: the next one is a new one.
        m_desktop->CloseNotification(ids.first());
        m_notifications->show(u"b"_s, notice(u"again"_s));
        QTRY_COMPARE(titles(), QStringList {u"again"_s});
        m_notifications->show(u"a"_s, notice(u"a"_s));
        QTRY_COMPARE(m_desktop->shown.size(), 2);
        QVERIFY(!m_desktop->shown.contains(ids.first()));
    }

    void withoutAServiceItIsSaidOnce()
    {
        auto server = QDBusConnection(u"vesk-test-desktop"_s);
        QVERIFY(server.unregisterService(u"org.freedesktop.Notifications"_s));
        m_notifications->show(u"a"_s, notice(u"lost"_s));
        QTRY_COMPARE(m_audit->recent(10).size(), 1);
        QVERIFY(m_audit->recent(1).first().summary.startsWith(u"desktop notifications unavailable: "_s));
        QVERIFY(server.registerService(u"org.freedesktop.Notifications"_s)); // it came up
        m_notifications->show(u"b"_s, notice(u"b"_s));
        QTRY_COMPARE(titles(), QStringList {u"b"_s});

        DesktopNotifications lonely(*m_audit, [] { return QDBusConnection(u"vesk-test-no-bus"_s); });
        for (int i = 0; i < 3; ++i)
            lonely.show(u"a"_s, notice(u"a"_s));
        QCOMPARE(m_audit->recent(10).size(), 2);
    }

private:
    QStringList titles() const
    {
        QStringList found;
        for (const auto &each : m_desktop->shown)
            found.append(each.title);
        return found;
    }

    std::unique_ptr<Test::PrivateBus> m_bus;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<AuditLogger> m_audit;
    std::unique_ptr<FakeDesktop> m_desktop;
    std::unique_ptr<DesktopNotifications> m_notifications;
};

VESK_TEST(DesktopNotificationsTest)

#include "DesktopNotificationsTest.moc"
