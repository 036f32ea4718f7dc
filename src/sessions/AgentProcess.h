// One child of the agent program: its start, its three pipes and its end.
#pragma once

#include <QObject>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>
#include <memory>
#include <string_view>

namespace Vesk
{

/** What a child is started with. */
struct AgentLaunch {
    QString program;
    QStringList arguments;
    QProcessEnvironment environment;
    QString workingDirectory;
};

/** How a child ended. Exactly one is given per started AgentProcess. */
struct AgentEnd {
    enum class Kind {
        FailedToStart, ///< `reason` tells why; nothing ran
        Exited,        ///< `code` is its exit status
        Killed,        ///< `code` is the signal
    };
    Kind kind = Kind::Exited;
    int code = 0;
    QString reason; ///< the system's own words, for FailedToStart
};

/**
 * A child in a process group of its own.
 *
 * States: NotStarted --start--> Starting --onStarted--> Running --> Finished. `onLine` and `onErrorLine` come
 * in Running only, `onEnded` once and last, on every road, also when the child could not start; after it
 * nothing is called. No callback is made from inside start(). The end comes when the child itself is gone,
 * with all that it wrote delivered, also if a grandchild still holds its pipes.
 *
 * Nothing here waits: writes are queued, a terminate request returns at once, and a child is never killed by
 * a destructor: destroying the object while its child lives is the same as release(). Callbacks may destroy
 * the object.
 */
class AgentProcess : public QObject
{
    Q_OBJECT

public:
    enum class State { NotStarted, Starting, Running, Finished };

    /** How long a child has after a terminate request before its whole group is killed. */
    static constexpr int killGraceMs = 5000;

    explicit AgentProcess(QObject *parent = nullptr);
    ~AgentProcess() override;

    std::function<void()> onStarted;
    std::function<void(std::string_view line)>
        onLine; ///< a line of standard output, with LineChunker's padding
    std::function<void(const QString &line)> onErrorLine; ///< a line of standard error
    std::function<void(const AgentEnd &end)> onEnded;

    void start(const AgentLaunch &launch);

    [[nodiscard]] State state() const;
    /** True from the successful start to the end of the child. */
    [[nodiscard]] bool isRunning() const { return state() == State::Running; }
    /** The child's process and group id; 0 while there is none. */
    [[nodiscard]] qint64 processId() const;

    /** Queues one line for standard input, the newline added. Ignored when the input is closed; dropped and
        counted when the child has left 64 MiB unread. */
    void writeLine(const QByteArray &line);
    /** True from start() until closeInput(), the child's closing of its side, or the end. */
    [[nodiscard]] bool inputIsOpen() const;
    [[nodiscard]] qsizetype droppedInputLines() const;
    /** Closes standard input after what is queued. */
    void closeInput();

    /** Asks the child to end (SIGTERM); after the grace its whole group is killed. Safe in every state. */
    void terminate();
    /** Another grace than killGraceMs, for terminate requests from now on. */
    void setKillGrace(std::chrono::milliseconds grace);

    /** Gives up a child that nobody listens to any more: callbacks are dropped, its input is closed after
       what is queued, its output is read and thrown away until it is gone; a terminate request made before
       still holds. At the end of the program the child is left behind without waiting. */
    static void release(std::unique_ptr<AgentProcess> process);

private:
    class Impl;
    Impl *m_impl; // outlives this object while the child lives
};

} // namespace Vesk
