#include "support/PrivateBus.h"

#include <QtTest>

namespace Vesk::Test
{

using namespace Qt::StringLiterals;

PrivateBus::PrivateBus()
{
    m_daemon.start(u"dbus-daemon"_s,
                   {u"--session"_s, u"--nofork"_s, u"--print-address"_s,
                    u"--address=unix:path="_s + m_folder.filePath(u"bus"_s)});
    if (m_daemon.waitForStarted() && QTest::qWaitFor([this] { return m_daemon.canReadLine(); }, 60000))
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
}

PrivateBus::~PrivateBus()
{
    m_daemon.terminate();
    m_daemon.waitForFinished();
}

} // namespace Vesk::Test
