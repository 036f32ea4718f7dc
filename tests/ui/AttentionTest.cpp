// Who is told what, and when: the decisions, and the whole road over a bus.
#include "ui/shell/Attention.h"

#include "sessions/ProjectChat.h"
#include "support/PrivateBus.h"
#include "support/TestRegistry.h"
#include "ui/shell/TrayDrawing.h"
#include "ui/shell/Workspace.h"
#include "ui/ShellStage.h"

#include <QAbstractItemModelTester>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;
using Test::ShellStage;

namespace
{

const QDateTime attentionNoon(QDate(2026, 3, 18), QTime(12, 0));

AttentionSession quietSession(const QString &key = u"a"_s)
{
    return {.key = key, .project = u"billing"_s, .title = u"환불"_s, .error = {}, .facts = {}};
}

AttentionSession waitingSession(const QString &key = u"a"_s, int secondsAgo = 60)
{
    AttentionSession session = quietSession(key);
    session.facts.running = true;
    session.facts.waitingTool = u"Bash"_s;
    session.facts.waitingSince = attentionNoon.addSecs(-secondsAgo);
    return session;
}

AttentionSession endedSession(const QString &key = u"a"_s, bool failed = false)
{
    AttentionSession session = quietSession(key);
    session.facts.unseen = true;
    session.facts.failed = failed;
    session.facts.lastActiveAt = attentionNoon;
    return session;
}

/** The plans of one step after the other, as "+shown -closed" for each step. */
QStringList story(const QList<std::pair<QList<AttentionSession>, AttentionWishes>> &steps)
{
    QStringList lines;
    QList<AttentionTold> told;
    for (const auto &[sessions, wishes] : steps) {
        const AttentionPlan plan = planAttention(sessions, wishes, told);
        told = plan.told;
        QStringList words;
        for (const QString &id : plan.close)
            words.append(u'-' + id);
        for (const AttentionNotice &each : plan.show)
            words.append(u'+' + each.id);
        lines.append(words.join(u' '));
    }
    return lines;
}

/** Plays both the tray and the notices of a desktop. */
class FakeNoticeDesk : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QMap<uint, QString> shown;

public Q_SLOTS:
    QStringList GetCapabilities() { return {}; }
    uint Notify(const QString &, uint replaces, const QString &, const QString &title, const QString &body,
                const QStringList &, const QVariantMap &, int)
    {
        const uint id = replaces != 0 ? replaces : ++m_last;
        shown.insert(id, title + u'\n' + body);
        return id;
    }
    void CloseNotification(uint id) { shown.remove(id); }

Q_SIGNALS:
    void ActionInvoked(uint id, const QString &action);

private:
    uint m_last = 0;
};

class FakeTrayWatcher : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)

public:
    bool hasHost() const { return true; }

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString &) { }
};

} // namespace

class AttentionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachSignalIsToldOnce()
    {
        const AttentionWishes away;
        const AttentionWishes here {.windowActive = true};
        // It waits, goes on waiting, is answered, ends, and is seen.
        QCOMPARE(
            story({{{quietSession()}, away},
                   {{waitingSession()}, away},
                   {{waitingSession()}, away},
                   {{quietSession()}, away},
                   {{endedSession()}, away},
                   {{endedSession()}, here},
                   {{quietSession()}, here}}),
            (QStringList {{}, u"+a/my-turn"_s, {}, u"-a/my-turn"_s, u"+a/finished"_s, u"-a/finished"_s, {}}));
        // What came while the person was here, or was seen by coming here, is not told afterwards.
        QCOMPARE(story({{{waitingSession(u"a"_s)}, here},
                        {{waitingSession(u"a"_s), waitingSession(u"b"_s)}, away},
                        {{waitingSession(u"a"_s), waitingSession(u"b"_s)}, here},
                        {{waitingSession(u"a"_s), waitingSession(u"b"_s)}, away}}),
                 (QStringList {{}, u"+b/my-turn"_s, u"-b/my-turn"_s, {}}));
        // A later prompt takes the place of the one before; a session that is gone takes its notice along.
        QCOMPARE(
            story({{{waitingSession(u"a"_s, 60)}, away}, {{waitingSession(u"a"_s, 5)}, away}, {{}, away}}),
            (QStringList {u"+a/my-turn"_s, u"+a/my-turn"_s, u"-a/my-turn"_s}));
        // Only what is wanted; a change of mind holds at once and brings nothing old.
        const AttentionWishes noEnds {.finished = false};
        QCOMPARE(story({{{endedSession(u"a"_s), waitingSession(u"b"_s)}, noEnds},
                        {{endedSession(u"a"_s), waitingSession(u"b"_s)}, {.myTurn = false}},
                        {{endedSession(u"a"_s), waitingSession(u"b"_s)}, away}}),
                 (QStringList {u"+b/my-turn"_s, u"-b/my-turn"_s, {}}));
    }

    void whatANoticeSays()
    {
        AttentionSession failed = endedSession(u"c"_s, true);
        failed.error = u"API Error: 529"_s;
        const AttentionPlan plan =
            planAttention({waitingSession(u"a"_s), endedSession(u"b"_s), failed}, {}, {});
        QStringList texts;
        for (const AttentionNotice &each : plan.show)
            texts.append(each.notice.title + u'|' + each.notice.body);
        QCOMPARE(texts,
                 (QStringList {u"내 차례 — billing|환불\nBash 승인 대기"_s, u"끝남 — billing|환불"_s,
                               u"실패 — billing|환불\nAPI Error: 529"_s}));
        QVERIFY(plan.show.at(0).notice.stays && !plan.show.at(1).notice.stays);
        QVERIFY(plan.show.at(0).notice.category != plan.show.at(1).notice.category);
        QCOMPARE(sessionOfNotice(plan.show.at(2).id), u"c"_s);
    }

    void toastsAreForSessionsOutOfView()
    {
        QList<AttentionTold> done;
        const auto shown = [&done](const QList<AttentionSession> &sessions, const QString &current,
                                   bool active) {
            const ToastPlan plan = planToasts(sessions, current, active, done);
            done = plan.done;
            QStringList keys;
            for (const AttentionSession &session : plan.show)
                keys.append(session.key);
            return keys.join(u' ');
        };
        const QList<AttentionSession> busy {endedSession(u"e"_s), waitingSession(u"w1"_s, 30),
                                            waitingSession(u"w2"_s, 90)};
        // What ended while nobody was here, or had no room, is no news later.
        QCOMPARE(shown({endedSession(u"e"_s)}, {}, false), QString());
        QCOMPARE(shown({endedSession(u"e"_s)}, {}, true), QString());
        done.clear();
        QCOMPARE(shown(busy, {}, true), u"w2 w1"_s);
        QCOMPARE(shown(busy, u"w2"_s, true), u"w1"_s);
        QCOMPARE(shown(busy, u"other"_s, true), u"w1"_s); // the other one was looked at
        QCOMPARE(
            shown({endedSession(u"n"_s), waitingSession(u"w1"_s, 30), waitingSession(u"w2"_s, 5)}, {}, true),
            u"w1 w2"_s); // a new prompt is
        QCOMPARE(shown({endedSession(u"m"_s), waitingSession(u"w1"_s, 30)}, u"x"_s, true), u"w1 m"_s);

        ToastsModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        model.setSessions({waitingSession(), endedSession(u"b"_s, true)});
        QCOMPARE(model.index(0).data(ToastsModel::DetailRole).toString(), u"billing · Bash 승인 대기"_s);
        QCOMPARE(model.index(1).data(ToastsModel::DetailRole).toString(), u"billing · 실패"_s);
        model.setSessions({endedSession(u"b"_s, true)});
        QCOMPARE(model.index(0).data(ToastsModel::KeyRole).toString(), u"b"_s);
    }

    void theTraysMenuBeginsWithWhatWaits()
    {
        AttentionSession running = quietSession(u"r"_s);
        running.facts.running = true;
        running.facts.runStartedAt = attentionNoon.addSecs(-84);
        QList<AttentionSession> sessions {endedSession(u"e"_s), running, waitingSession(u"w1"_s, 30),
                                          waitingSession(u"w2"_s, 300)};
        QStringList keys;
        for (const TrayMenuEntry &entry : trayMenu(sessions, attentionNoon))
            keys.append(entry.kind == TrayMenuEntry::Kind::Action ? entry.key : entry.label);
        QCOMPARE(keys,
                 (QStringList {u"내 차례"_s,
                               u"w2"_s,
                               u"w1"_s,
                               {},
                               u"실행 중"_s,
                               u"r"_s,
                               {},
                               u"끝남"_s,
                               u"e"_s,
                               {},
                               u"new"_s,
                               u"open"_s,
                               {},
                               u"quit"_s}));
        QCOMPARE(trayMenu(sessions, attentionNoon).at(5).label, u"환불 · billing — 1:24"_s);
        QCOMPARE(trayToolTip(trayCounts(sessions)), u"내 차례 2 · 실행 중 1 · 끝남 1"_s);
        for (int more = 0; more < 12; ++more)
            sessions.append(waitingSession(u"m%1"_s.arg(more)));
        QCOMPARE(trayMenu(sessions, attentionNoon).at(11).label, u"외 4개"_s);
        QCOMPARE(trayMenu({}, attentionNoon).size(), 4);
    }

    void theIconShowsTheState()
    {
        const QColor amber(u"#F2B84B"_s);
        const QPoint edge(11, 1);
        const QImage plain = trayImage({}, 22);
        const QImage waits = trayImage({.waiting = 12, .running = 1, .unseen = 3}, 22);
        const QImage unseen = trayImage({.unseen = 1}, 22);
        QCOMPARE(waits.pixelColor(edge), amber);
        QVERIFY(plain.pixelColor(edge) != amber);
        QCOMPARE(unseen.pixelColor(edge), plain.pixelColor(edge));
        QVERIFY(unseen.pixelColor(18, 18) != plain.pixelColor(18, 18));
        const TrayFace face = trayFace({.waiting = 1});
        QVERIFY(face.needsAttention);
        for (const TrayPicture &picture : face.pictures)
            QCOMPARE(picture.argb.size(), picture.width * picture.height * 4);
        // Network byte order: alpha first.
        QCOMPARE(face.pictures.at(1).argb.mid((22 + 11) * 4, 4).toHex(), QByteArray("fff2b84b"));
    }

    void closing_data()
    {
        QTest::addColumn<bool>("inTray");
        QTest::addColumn<bool>("working");
        QTest::addColumn<int>("road");
        QTest::newRow("tray") << true << false << int(CloseRoad::Hide);
        QTest::newRow("tray, working") << true << true << int(CloseRoad::Hide);
        QTest::newRow("no tray, working") << false << true << int(CloseRoad::Ask);
        QTest::newRow("no tray") << false << false << int(CloseRoad::Quit);
    }

    void closing()
    {
        QFETCH(bool, inTray);
        QFETCH(bool, working);
        QTEST(int(closeRoad(inTray, working)), "road");
    }

    void overARealBus()
    {
        const Test::PrivateBus bus;
        if (bus.address().isEmpty())
            QSKIP("no dbus-daemon");
        FakeNoticeDesk desk;
        FakeTrayWatcher watcher;
        {
            auto server = QDBusConnection::connectToBus(bus.address(), u"vesk-test-desk"_s);
            const auto everything = QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals
                | QDBusConnection::ExportAllProperties;
            QVERIFY(server.registerObject(u"/org/freedesktop/Notifications"_s, &desk, everything));
            QVERIFY(server.registerObject(u"/StatusNotifierWatcher"_s, &watcher, everything));
            QVERIFY(server.registerService(u"org.freedesktop.Notifications"_s));

            ShellStage stage;
            stage.runtime().start();
            stage.addProject(u"billing"_s, 0);
            Workspace workspace(stage.runtime());
            workspace.setWindowActive(true);
            int raised = 0;
            stage.runtime().openMainWindow = [&raised] { ++raised; };
            Attention attention(workspace, stage.runtime(), [&bus] {
                return QDBusConnection::connectToBus(bus.address(), u"vesk-test-attention"_s);
            });
            QSignalSpy hidden(&attention, &Attention::hideAsked);
            QSignalSpy asked(&attention, &Attention::confirmationAsked);
            QSignalSpy over(&attention, &Attention::endAsked);
            QVERIFY(attention.mayClose());
            attention.begin();
            QVERIFY(!attention.inTray());
            ProjectChat &first = stage.addSession(u"billing"_s, u"first"_s);
            ProjectChat &second = stage.addSession(u"billing"_s, u"second"_s);
            ShellStage::run(first, u"go"_s);
            ShellStage::run(second, u"go"_s);
            QVERIFY(!attention.mayClose());
            QCOMPARE(asked.size(), 1);

            workspace.setWindowActive(false);
            ShellStage::askPermission(second, u"Bash"_s, u"ls"_s);
            QTRY_COMPARE(desk.shown.values(), QStringList {u"내 차례 — billing\nsecond\nBash 승인 대기"_s});
            QCOMPARE(workspace.currentChat(), &first);
            // The answer with the number may be under way while the notice is there already.
            QTRY_VERIFY((Q_EMIT desk.ActionInvoked(desk.shown.firstKey(), u"default"_s), QTest::qWait(20),
                         raised > 0));
            QCOMPARE(workspace.currentChat(), &second);
            second.respondToPermission(PermissionChoice::Once);
            QTRY_VERIFY(desk.shown.isEmpty());
            ShellStage::finish(second, u"done"_s);
            QTRY_COMPARE(desk.shown.values(), QStringList {u"끝남 — billing\nsecond"_s});
            workspace.setWindowActive(true);
            QTRY_VERIFY(desk.shown.isEmpty());

            QVERIFY(server.registerService(u"org.kde.StatusNotifierWatcher"_s));
            QTRY_VERIFY(attention.inTray());
            QVERIFY(!attention.mayClose());
            QCOMPARE(hidden.size(), 1);
            // A window that was hidden comes back with the tray's end, one that is in view is left alone.
            raised = 0;
            QVERIFY(server.unregisterService(u"org.kde.StatusNotifierWatcher"_s));
            QTRY_COMPARE(raised, 1);
            QVERIFY(!attention.inTray());
            attention.setWindowVisible(true);
            for (const bool there : {true, false, true}) {
                QVERIFY(there ? server.registerService(u"org.kde.StatusNotifierWatcher"_s)
                              : server.unregisterService(u"org.kde.StatusNotifierWatcher"_s));
                QTRY_COMPARE(attention.inTray(), there);
            }
            QCOMPARE(raised, 1);
            attention.requestEnd(); // the first one still works
            QCOMPARE(asked.size(), 2);
            first.stop();
            over.clear();
            attention.requestEnd();
            QCOMPARE(over.size(), 1);
        }
        for (const QString &name : {u"vesk-test-desk"_s, u"vesk-test-attention"_s})
            QDBusConnection::disconnectFromBus(name);
    }
};

VESK_TEST(AttentionTest)
#include "AttentionTest.moc"
