#include "core/TrayItem.h"

#include "support/PrivateBus.h"
#include "support/TestRegistry.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

/** Plays the tray's watcher, with or without something that draws it. */
class FakeWatcher : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER hasHost)

public:
    bool hasHost = true;
    QString item; ///< bus name and path

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString &path) { item = message().service() + path; }

Q_SIGNALS:
    void StatusNotifierHostRegistered();
};

struct Line {
    int id = 0;
    QVariantMap properties;
};

/** The lines of a layout, read by hand: what another program would find on the wire. */
QList<Line> linesOf(const QDBusMessage &reply)
{
    QList<Line> lines;
    const auto root = reply.arguments().at(1).value<QDBusArgument>();
    Line line;
    root.beginStructure();
    root >> line.id >> line.properties;
    root.beginArray();
    while (!root.atEnd()) {
        QDBusVariant child;
        root >> child;
        const auto inner = child.variant().value<QDBusArgument>();
        inner.beginStructure();
        inner >> line.id >> line.properties;
        lines.append(line);
    }
    return lines;
}

/** A click on a line, as a group of events holds it. */
struct TrayClick {
    int id = 0;
};

[[maybe_unused]] QDBusArgument &operator<<(QDBusArgument &argument, const TrayClick &click)
{
    argument.beginStructure();
    argument << click.id << u"clicked"_s << QDBusVariant(0) << 0U;
    argument.endStructure();
    return argument;
}

[[maybe_unused]] const QDBusArgument &operator>>(const QDBusArgument &argument, TrayClick &)
{
    return argument;
}

} // namespace

Q_DECLARE_METATYPE(TrayClick)

class TrayItemTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qDBusRegisterMetaType<TrayClick>();
        m_bus = std::make_unique<Test::PrivateBus>();
        if (m_bus->address().isEmpty())
            QSKIP("no dbus-daemon");
    }

    void init()
    {
        m_watcher = std::make_unique<FakeWatcher>();
        auto tray = QDBusConnection::connectToBus(m_bus->address(), u"vesk-test-tray"_s);
        QVERIFY(tray.registerObject(u"/StatusNotifierWatcher"_s, m_watcher.get(),
                                    QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals
                                        | QDBusConnection::ExportAllProperties));
        m_menu = {{TrayMenuEntry::Kind::Heading, {}, u"내 차례"_s},
                  {TrayMenuEntry::Kind::Action, u"session:1"_s, u"web_hook · billing"_s},
                  {TrayMenuEntry::Kind::Separator, {}, {}},
                  {TrayMenuEntry::Kind::Action, u"quit"_s, u"끝내기"_s}};
        m_item = std::make_unique<TrayItem>(
            [this] { return m_menu; },
            [this] { return QDBusConnection::connectToBus(m_bus->address(), u"vesk-test-item"_s); });
    }

    void cleanup()
    {
        m_item.reset();
        for (const QString &name : {u"vesk-test-tray"_s, u"vesk-test-item"_s})
            QDBusConnection::disconnectFromBus(name);
    }

    void itComesAndGoesWithTheTray()
    {
        auto tray = QDBusConnection(u"vesk-test-tray"_s);
        QVERIFY(!m_item->isShown());
        m_watcher->hasHost = false;
        QVERIFY(tray.registerService(u"org.kde.StatusNotifierWatcher"_s));
        QTRY_VERIFY(!m_watcher->item.isEmpty());
        m_watcher->hasHost = true;
        Q_EMIT m_watcher->StatusNotifierHostRegistered();
        QTRY_VERIFY(m_item->isShown());
        QVERIFY(tray.unregisterService(u"org.kde.StatusNotifierWatcher"_s));
        QTRY_VERIFY(!m_item->isShown());
        m_watcher->item.clear();
        QVERIFY(tray.registerService(u"org.kde.StatusNotifierWatcher"_s));
        QTRY_VERIFY(m_item->isShown());
        QVERIFY(!m_watcher->item.isEmpty());

        const TrayItem nowhere([] { return QList<TrayMenuEntry>(); },
                               [] { return QDBusConnection(u"vesk-test-no-bus"_s); });
        QVERIFY(!nowhere.isShown());
    }

    void theFaceIsOnTheBus()
    {
        m_item->setFace({.pictures = {{.width = 1, .height = 1, .argb = "\xff\x01\x02\x03"}},
                         .toolTip = u"내 차례 2"_s,
                         .needsAttention = true});
        const QDBusMessage reply =
            ask(u""_s, u"org.freedesktop.DBus.Properties"_s, u"GetAll"_s, {u"org.kde.StatusNotifierItem"_s});
        QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        const auto values = qdbus_cast<QVariantMap>(reply.arguments().constFirst());
        QCOMPARE(values.value(u"Status"_s).toString(), u"NeedsAttention"_s);
        QCOMPARE(values.value(u"Menu"_s).value<QDBusObjectPath>().path(), u"/StatusNotifierItem/Menu"_s);
        QCOMPARE(values.value(u"IconPixmap"_s).value<QDBusArgument>().currentSignature(), u"a(iiay)"_s);
        QCOMPARE(values.value(u"ToolTip"_s).value<QDBusArgument>().currentSignature(), u"(sa(iiay)ss)"_s);
    }

    void theMenuAndWhatIsChosen()
    {
        QStringList chosen;
        m_item->onTriggered = [&chosen](const QString &key, const QString &token) {
            chosen.append(key + u'/' + token);
        };
        m_item->onActivated = [&chosen](const QString &) { chosen.append(u"activated"_s); };

        const QDBusMessage first = layout();
        QCOMPARE(first.signature(), u"u(ia{sv}av)"_s);
        QList<Line> lines = linesOf(first);
        QCOMPARE(lines.size(), 4);
        QCOMPARE(lines.at(0).properties.value(u"enabled"_s).toBool(), false);
        QCOMPARE(lines.at(1).properties.value(u"label"_s).toString(), u"web__hook · billing"_s);
        QCOMPARE(lines.at(2).properties.value(u"type"_s).toString(), u"separator"_s);
        const int session = lines.at(1).id;
        const int quit = lines.at(3).id;

        // Another session takes the first line: a click on the menu as it was still means the old one.
        m_menu[1].key = u"session:2"_s;
        QCOMPARE(ask(u"/Menu"_s, menuInterface(), u"AboutToShow"_s, {0}).arguments().constFirst().toBool(),
                 true);
        QCOMPARE(ask(u"/Menu"_s, menuInterface(), u"AboutToShow"_s, {0}).arguments().constFirst().toBool(),
                 false);
        lines = linesOf(layout());
        QVERIFY(lines.at(1).id != session);
        QCOMPARE(lines.at(3).id, quit);
        ask(u""_s, u"org.kde.StatusNotifierItem"_s, u"ProvideXdgActivationToken"_s, {u"t"_s});
        for (const int id : {session, lines.at(0).id, 99, quit})
            ask(u"/Menu"_s, menuInterface(), u"Event"_s,
                {id, u"clicked"_s, QVariant::fromValue(QDBusVariant(0)), 0U});
        ask(u"/Menu"_s, menuInterface(), u"Event"_s,
            {quit, u"hovered"_s, QVariant::fromValue(QDBusVariant(0)), 0U});
        QTRY_COMPARE(chosen, (QStringList {u"session:1/t"_s, u"quit/"_s}));

        // Panels differ in the calls that they prefer.
        QDBusArgument events;
        events.beginArray(QMetaType::fromType<TrayClick>());
        for (const int id : {quit, session})
            events << TrayClick {id};
        events.endArray();
        QCOMPARE(ask(u"/Menu"_s, menuInterface(), u"EventGroup"_s, {QVariant::fromValue(events)}).signature(),
                 u"ai"_s);
        QTRY_COMPARE(chosen.mid(2), (QStringList {u"quit/"_s, u"session:1/"_s}));
        QCOMPARE(ask(u"/Menu"_s, menuInterface(), u"AboutToShowGroup"_s, {QVariant::fromValue(QList {0})})
                     .signature(),
                 u"aiai"_s);
        QCOMPARE(ask(u"/Menu"_s, menuInterface(), u"GetGroupProperties"_s,
                     {QVariant::fromValue(QList {quit}), QStringList()})
                     .signature(),
                 u"a(ia{sv})"_s);
        QCOMPARE(ask(u"/Menu"_s, menuInterface(), u"GetProperty"_s, {quit, u"label"_s})
                     .arguments()
                     .constFirst()
                     .value<QDBusVariant>()
                     .variant()
                     .toString(),
                 u"끝내기"_s);
        ask(u""_s, u"org.kde.StatusNotifierItem"_s, u"Activate"_s, {3, 4});
        QTRY_COMPARE(chosen.last(), u"activated"_s);
    }

private:
    static QString menuInterface() { return u"com.canonical.dbusmenu"_s; }

    QDBusMessage layout() { return ask(u"/Menu"_s, menuInterface(), u"GetLayout"_s, {0, -1, QStringList()}); }

    /** A call as the tray makes it. */
    QDBusMessage ask(const QString &below, const QString &interface, const QString &method,
                     const QVariantList &arguments)
    {
        auto call = QDBusMessage::createMethodCall(QDBusConnection(u"vesk-test-item"_s).baseService(),
                                                   u"/StatusNotifierItem"_s + below, interface, method);
        call.setArguments(arguments);
        QDBusPendingCall pending = QDBusConnection(u"vesk-test-tray"_s).asyncCall(call);
        if (!QTest::qWaitFor([&pending] { return pending.isFinished(); }, 60000))
            return {};
        return pending.reply();
    }

    std::unique_ptr<Test::PrivateBus> m_bus;
    std::unique_ptr<FakeWatcher> m_watcher;
    std::unique_ptr<TrayItem> m_item;
    QList<TrayMenuEntry> m_menu;
};

VESK_TEST(TrayItemTest)

#include "TrayItemTest.moc"
