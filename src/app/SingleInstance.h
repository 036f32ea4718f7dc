// One Vesk per application-support folder; a second start brings the first one's window up.
#pragma once

#include <QLockFile>
#include <QObject>
#include <QString>

#include <functional>

class QLocalServer;

namespace Vesk
{

/**
 * A lock file says who is first, a local socket beside it takes the second one's wish. The lock dies with its
 * process, so a crash leaves nothing to clean up by hand.
 */
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    enum class Role {
        First,     ///< this process holds the lock and listens
        Second,    ///< another process holds it
        Unguarded, ///< the lock cannot be made here (unwritable folder); this process goes on alone
    };

    /** How long a second start waits for the first one's answer. */
    static constexpr int answerMs = 3000;

    explicit SingleInstance(const QString &folder, QObject *parent = nullptr);
    ~SingleInstance() override;

    /** Takes the lock if it is free, and listens. */
    Role claim();

    /** Called when another start asks for the window. */
    std::function<void()> onRaise;

    /** For the Second: asks the first to show its window; `done(true)` when it answered. */
    void askFirst(std::function<void(bool answered)> done);

private:
    void listen();

    QString m_socketPath;
    QLockFile m_lock;
    QLocalServer *m_server = nullptr;
};

} // namespace Vesk
