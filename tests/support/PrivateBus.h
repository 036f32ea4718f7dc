// A D-Bus of a test's own.
#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace Vesk::Test
{

/** A bus daemon that ends with this object. Connections to it are the test's to close before. */
class PrivateBus
{
public:
    PrivateBus();
    ~PrivateBus();

    /** Where it listens; empty when there is no daemon on this machine. */
    [[nodiscard]] const QString &address() const { return m_address; }

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
};

} // namespace Vesk::Test
