#include "core/AuditLogger.h"
#include "core/KeepAwakeController.h"
#include "core/LogindInhibitor.h"
#include "core/Preferences.h"
#include "support/PrivateBus.h"
#include "support/TestRegistry.h"

#include <QDBusError>
#include <QDBusUnixFileDescriptor>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

/** Plays logind: hands out the write end of a pipe, and sees by the read end whether it is still held. */
class FakeLogind : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    ~FakeLogind() override
    {
        if (m_readEnd >= 0)
            ::close(m_readEnd);
    }

    bool isReleased() const
    {
        char byte = 0;
        return m_readEnd >= 0 && ::read(m_readEnd, &byte, 1) == 0;
    }

    QStringList asked;

public Q_SLOTS:
    QDBusUnixFileDescriptor Inhibit(const QString &what, const QString &who, const QString &why,
                                    const QString &mode)
    {
        asked = {what, who, why, mode};
        int ends[2] = {-1, -1};
        if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
            return {};
        m_readEnd = ends[0];
        QDBusUnixFileDescriptor given(ends[1]);
        ::close(ends[1]);
        return given;
    }

private:
    int m_readEnd = -1;
};

} // namespace

class KeepAwakeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_preferences = std::make_unique<Preferences>(m_dir->filePath(u"p.ini"_s));
        m_audit = std::make_unique<AuditLogger>(m_dir->filePath(u"audit.log"_s));
        m_pending.clear();
        m_held = 0;
    }

    void onePerProgramWhileSessionsRun()
    {
        KeepAwakeController controller(*m_preferences, *m_audit, deferred());
        m_preferences->setKeepAwake(true);
        QCOMPARE(m_pending.size(), 0U);
        controller.noteRunStarted();
        controller.noteRunStarted();
        QCOMPARE(m_pending.size(), 1U);
        answer();
        QCOMPARE(m_held, 1);
        controller.noteRunEnded();
        QCOMPARE(m_held, 1);
        controller.noteRunEnded();
        QCOMPARE(m_held, 0);
        controller.noteRunEnded(); // clamped
        QCOMPARE(controller.runningCount(), 0);
        controller.noteRunStarted();
        answer();
        QVERIFY(controller.holdsActivity());
        m_preferences->setKeepAwake(false);
        QCOMPARE(m_held, 0);
    }

    void whatArrivesTooLateIsLetGo()
    {
        m_preferences->setKeepAwake(true);
        KeepAwakeController controller(*m_preferences, *m_audit, deferred());
        controller.noteRunStarted();
        controller.noteRunEnded();
        answer();
        QCOMPARE(m_held, 0);

        controller.noteRunStarted();
        controller.noteRunEnded();
        controller.noteRunStarted(); // wanted again before the answer: still one call, and it is kept
        QCOMPARE(m_pending.size(), 1U);
        answer();
        QCOMPARE(m_held, 1);
    }

    void withoutABusItIsSaidOnce()
    {
        m_preferences->setKeepAwake(true);
        KeepAwakeController controller(*m_preferences, *m_audit, logindIdleInhibition([] {
            return QDBusConnection::connectToBus(u"unix:path=/nonexistent/bus"_s, u"vesk-test-no-bus"_s);
        }));
        for (int i = 0; i < 3; ++i) {
            controller.noteRunStarted();
            controller.noteRunEnded();
        }
        QVERIFY(!controller.holdsActivity());
        QCOMPARE(m_audit->recent(10).size(), 1);
        QVERIFY(m_audit->recent(1).first().summary.startsWith(u"keep-awake unavailable: "_s));
    }

    void logindOverARealBus()
    {
        const Test::PrivateBus bus;
        const QString &address = bus.address();
        if (address.isEmpty())
            QSKIP("no dbus-daemon");
        FakeLogind logind;
        {
            QDBusConnection server = QDBusConnection::connectToBus(address, u"vesk-test-logind"_s);
            QVERIFY2(server.isConnected(), qUtf8Printable(server.lastError().message()));
            QVERIFY(server.registerObject(u"/org/freedesktop/login1"_s, &logind,
                                          QDBusConnection::ExportAllSlots));
            QVERIFY(server.registerService(u"org.freedesktop.login1"_s));

            m_preferences->setKeepAwake(true);
            KeepAwakeController controller(*m_preferences, *m_audit, logindIdleInhibition([&address] {
                return QDBusConnection::connectToBus(address, u"vesk-test-client"_s);
            }));
            controller.noteRunStarted();
            QTRY_VERIFY(controller.holdsActivity());
            QCOMPARE(
                logind.asked,
                (QStringList {u"idle"_s, u"Vesk"_s, u"orvane: 인앱 에이전트 세션 실행 중"_s, u"block"_s}));
            QVERIFY(!logind.isReleased());
            controller.noteRunEnded();
            QTRY_VERIFY(logind.isReleased());
            QVERIFY(m_audit->recent(1).isEmpty());

            QVERIFY(server.unregisterService(u"org.freedesktop.login1"_s));
            controller.noteRunStarted();
            QTRY_COMPARE(m_audit->recent(10).size(), 1);
        }
        for (const QString &name : {u"vesk-test-client"_s, u"vesk-test-logind"_s})
            QDBusConnection::disconnectFromBus(name);
    }

private:
    AcquireSleepInhibition deferred()
    {
        return [this](QObject *, const QString &, std::function<void(Result<SleepInhibition>)> done) {
            m_pending.push_back(std::move(done));
        };
    }

    void answer()
    {
        const auto done = std::exchange(m_pending, {}).front();
        ++m_held;
        done(SleepInhibition(new int(0), [this](const int *token) {
            delete token;
            --m_held;
        }));
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<AuditLogger> m_audit;
    std::vector<std::function<void(Result<SleepInhibition>)>> m_pending;
    int m_held = 0;
};

VESK_TEST(KeepAwakeTest)

#include "KeepAwakeTest.moc"
