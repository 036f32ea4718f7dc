#include "app/SingleInstance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTimer>

namespace Vesk
{

namespace
{

constexpr qsizetype maxSocketPathBytes = 100; // sockaddr_un holds 108 with its end

QString socketPathFor(const QString &folder)
{
    const QString beside = folder + QStringLiteral("/instance.sock");
    if (beside.toUtf8().size() <= maxSocketPathBytes)
        return beside;
    const auto hash = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1).toHex().left(16);
    return QDir::tempPath() + QStringLiteral("/vesk-") + QString::fromLatin1(hash) + QStringLiteral(".sock");
}

} // namespace

SingleInstance::SingleInstance(const QString &folder, QObject *parent)
    : QObject(parent)
    , m_socketPath(socketPathFor(folder))
    , m_lock(folder + QStringLiteral("/instance.lock"))
{
    m_lock.setStaleLockTime(0); // only a dead owner makes it stale, not its age
}

SingleInstance::~SingleInstance() = default;

SingleInstance::Role SingleInstance::claim()
{
    if (m_lock.tryLock(0)) {
        listen();
        return Role::First;
    }
    return m_lock.error() == QLockFile::LockFailedError ? Role::Second : Role::Unguarded;
}

void SingleInstance::listen()
{
    QLocalServer::removeServer(m_socketPath); // of a process that died: we hold the lock
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server, &QLocalServer::newConnection, this, [this] {
        while (auto *socket = m_server->nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            socket->write("shown\n");
            socket->flush();
            socket->disconnectFromServer();
            if (onRaise)
                onRaise();
        }
    });
    m_server->listen(m_socketPath);
}

void SingleInstance::askFirst(std::function<void(bool)> done)
{
    auto *socket = new QLocalSocket(this);
    auto *limit = new QTimer(socket);
    limit->setSingleShot(true);
    auto finish = [socket, done = std::move(done)](bool answered) {
        socket->disconnect();
        socket->deleteLater();
        done(answered);
    };
    connect(socket, &QLocalSocket::readyRead, this, [finish] { finish(true); });
    connect(socket, &QLocalSocket::errorOccurred, this, [finish] { finish(false); });
    connect(limit, &QTimer::timeout, this, [finish] { finish(false); });
    limit->start(answerMs);
    socket->connectToServer(m_socketPath);
}

} // namespace Vesk
