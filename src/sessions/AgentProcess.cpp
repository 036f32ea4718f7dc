#include "sessions/AgentProcess.h"

#include "base/LineChunker.h"
#include "sessions/AgentProcessPipes_p.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QProcess>
#include <QScopedValueRollback>
#include <QSet>
#include <QTimer>

#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace Vesk
{

namespace
{

Q_LOGGING_CATEGORY(logSessions, "vesk.sessions")

// Error lines are for the log, so a long one need not be kept whole.
constexpr qsizetype maxErrorLineBytes = qsizetype {1024} * 1024;

// Runs in the child between fork and exec: system calls only. Vesk ignores some signals, and an ignored
// signal stays ignored through exec: such a child would be deaf to every terminate request.
void prepareChild(int input, int output, int error)
{
    ::setpgid(0, 0);
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGPIPE, SIGCHLD, SIGUSR1, SIGUSR2})
        (void)::signal(signal, SIG_DFL);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::dup2(input, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(error, STDERR_FILENO);
}

// QProcess says "chdir: reason" or "execve: reason"; people want to know what it was that is not there.
QString startFailureReason(const QString &errorString, const AgentLaunch &launch)
{
    const auto separator = errorString.indexOf(QLatin1StringView(": "));
    const QString reason = separator < 0 ? errorString : errorString.mid(separator + 2);
    const bool folderFailed = errorString.startsWith(QLatin1StringView("chdir"));
    return (folderFailed ? launch.workingDirectory : launch.program) + QStringLiteral(": ") + reason;
}

// Finds the usual reasons before anything is forked: QProcess of Qt 6.4 keeps a descriptor open for good
// whenever the start fails in the child. Empty when the start is worth trying.
QString obviousFailure(const AgentLaunch &launch)
{
    const auto refused = [](const QString &path, int mode) -> QString {
        if (::access(QFile::encodeName(path).constData(), mode) != 0)
            return path + QStringLiteral(": ") + qt_error_string(errno);
        return {};
    };
    QString reason;
    if (!launch.workingDirectory.isEmpty()) {
        reason = refused(launch.workingDirectory, X_OK);
        if (reason.isEmpty() && !QFileInfo(launch.workingDirectory).isDir())
            reason = launch.workingDirectory + QStringLiteral(": ") + qt_error_string(ENOTDIR);
    }
    if (reason.isEmpty() && launch.program.contains(u'/')) {
        reason = refused(launch.program, X_OK);
        if (reason.isEmpty() && QFileInfo(launch.program).isDir())
            reason = launch.program + QStringLiteral(": ") + qt_error_string(EISDIR);
    }
    return reason;
}

} // namespace

class AgentProcess::Impl final : public QObject
{
public:
    explicit Impl(AgentProcess *owner);
    ~Impl() override { orphans().remove(this); }

    void start(const AgentLaunch &launch);
    void writeLine(const QByteArray &line);
    void terminate();
    /** The owner is going: stay until the child is gone, then go too. */
    void abandon();

    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] bool childLives() const { return m_process.state() != QProcess::NotRunning; }
    [[nodiscard]] qint64 processId() const { return m_process.processId(); }
    [[nodiscard]] qsizetype droppedLines() const { return m_droppedLines; }
    [[nodiscard]] InputPipe &input() { return m_input; }
    void setKillGrace(std::chrono::milliseconds grace) { m_killTimer.setInterval(grace); }

private:
    // Those whose owner is gone. Never destroyed: a QProcess's destructor waits for its child.
    static QSet<Impl *> &orphans()
    {
        static auto *const set = new QSet<Impl *>;
        return *set;
    }

    Result<Pipe> openOutput(OutputPipe &pipe, std::function<void()> onReadable);
    void noteStarted();
    void noteFinished(int code, QProcess::ExitStatus status);
    void failLater(const QString &reason);
    void conclude(const AgentEnd &end);
    void readOutput();
    void readErrors();
    void deliverLines(QByteArrayView bytes);
    void deliverErrorLines(QByteArrayView bytes);

    // A copy of the callback is called, for the call may destroy the owner and its members.
    template <typename Callback, typename... Arguments>
    void call(Callback AgentProcess::*member, const Arguments &...arguments)
    {
        const Callback callback = m_owner ? m_owner->*member : Callback();
        if (callback)
            callback(arguments...);
    }

    AgentProcess *m_owner;
    QProcess m_process;
    QTimer m_killTimer;
    OutputPipe m_output;
    OutputPipe m_errors;
    InputPipe m_input;
    LineChunker m_outputLines;
    LineChunker m_errorLines {maxErrorLineBytes};
    State m_state = State::NotStarted;
    qsizetype m_droppedLines = 0;
    bool m_delivering = false; // inside a callback: it may run an event loop or destroy the owner
    bool m_terminateWanted = false;
};

AgentProcess::Impl::Impl(AgentProcess *owner)
    : m_owner(owner)
{
    m_killTimer.setSingleShot(true);
    m_killTimer.setInterval(killGraceMs);
    connect(&m_killTimer, &QTimer::timeout, this, [this] {
        // Its id is the child's for as long as QProcess has not fetched its exit status.
        if (m_process.state() == QProcess::Running)
            ::kill(-static_cast<pid_t>(m_process.processId()), SIGKILL);
    });
    connect(&m_process, &QProcess::started, this, &Impl::noteStarted);
    connect(&m_process, &QProcess::finished, this, &Impl::noteFinished);
}

Result<Pipe> AgentProcess::Impl::openOutput(OutputPipe &pipe, std::function<void()> onReadable)
{
    auto ends = makePipe(PipeDirection::FromChild);
    if (ends)
        pipe.open(std::move(ends->ours), std::move(onReadable));
    return ends;
}

void AgentProcess::Impl::start(const AgentLaunch &launch)
{
    if (m_state != State::NotStarted)
        return;
    m_state = State::Starting;
    if (const QString reason = obviousFailure(launch); !reason.isEmpty()) {
        failLater(reason);
        return;
    }
    auto input = makePipe(PipeDirection::ToChild);
    const auto output = openOutput(m_output, [this] { readOutput(); });
    const auto errors = openOutput(m_errors, [this] { readErrors(); });
    if (!input || !output || !errors) {
        failLater(!input ? input.error().text : !output ? output.error().text : errors.error().text);
        return;
    }
    m_input.open(std::move(input->ours));

    connect(&m_process, &QProcess::errorOccurred, this, [this, launch](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            failLater(startFailureReason(m_process.errorString(), launch));
    });
    // The pipes are ours, so QProcess gets none to make.
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    m_process.setInputChannelMode(QProcess::ForwardedInputChannel);
    m_process.setChildProcessModifier([in = input->childs.get(), out = output->childs.get(),
                                       err = errors->childs.get()] { prepareChild(in, out, err); });
    m_process.setProgram(launch.program);
    m_process.setArguments(launch.arguments);
    m_process.setProcessEnvironment(launch.environment);
    m_process.setWorkingDirectory(launch.workingDirectory);
    m_process.start();
}

void AgentProcess::Impl::noteStarted()
{
    m_state = State::Running;
    m_output.setWatching(true);
    m_errors.setWatching(true);
    m_input.startWriting();
    if (m_terminateWanted)
        terminate();
    const QScopedValueRollback delivering(m_delivering, true);
    call(&AgentProcess::onStarted);
}

void AgentProcess::Impl::readOutput()
{
    if (m_delivering)
        return;
    m_output.readBatch([this](QByteArrayView bytes) { deliverLines(bytes); });
    // A child that has no more to say is waiting for the end of its input before it goes.
    if (!m_output.isOpen())
        m_input.abort();
}

void AgentProcess::Impl::readErrors()
{
    if (!m_delivering)
        m_errors.readBatch([this](QByteArrayView bytes) { deliverErrorLines(bytes); });
}

void AgentProcess::Impl::deliverLines(QByteArrayView bytes)
{
    if (!m_owner)
        return;
    const QScopedValueRollback delivering(m_delivering, true);
    m_outputLines.append(bytes, [this](std::string_view line) { call(&AgentProcess::onLine, line); });
}

void AgentProcess::Impl::deliverErrorLines(QByteArrayView bytes)
{
    if (!m_owner)
        return;
    const QScopedValueRollback delivering(m_delivering, true);
    m_errorLines.append(bytes, [this](std::string_view line) {
        call(&AgentProcess::onErrorLine, QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size())));
    });
}

void AgentProcess::Impl::noteFinished(int code, QProcess::ExitStatus status)
{
    if (m_delivering) { // a callback runs an event loop: its line comes first
        QMetaObject::invokeMethod(
            this, [=, this] { noteFinished(code, status); }, Qt::QueuedConnection);
        return;
    }
    m_output.drain([this](QByteArrayView bytes) { deliverLines(bytes); });
    m_errors.drain([this](QByteArrayView bytes) { deliverErrorLines(bytes); });
    {
        const QScopedValueRollback delivering(m_delivering, true);
        m_outputLines.finish([this](std::string_view line) { call(&AgentProcess::onLine, line); });
        m_errorLines.finish([this](std::string_view line) {
            call(&AgentProcess::onErrorLine,
                 QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size())));
        });
    }
    const bool exited = status == QProcess::NormalExit;
    conclude({exited ? AgentEnd::Kind::Exited : AgentEnd::Kind::Killed, code, {}});
}

void AgentProcess::Impl::failLater(const QString &reason)
{
    QMetaObject::invokeMethod(
        this,
        [this, reason] {
            conclude({AgentEnd::Kind::FailedToStart, 0, reason});
        },
        Qt::QueuedConnection);
}

void AgentProcess::Impl::conclude(const AgentEnd &end)
{
    m_state = State::Finished;
    m_killTimer.stop();
    m_output.close();
    m_errors.close();
    m_input.abort();
    if (m_droppedLines > 0)
        qCWarning(logSessions) << "lines dropped for a child that did not read:" << m_droppedLines;
    const bool orphan = m_owner == nullptr;
    {
        const QScopedValueRollback delivering(m_delivering, true);
        call(&AgentProcess::onEnded, end);
    }
    if (orphan)
        deleteLater();
}

void AgentProcess::Impl::writeLine(const QByteArray &line)
{
    if (!m_input.push(line + '\n'))
        ++m_droppedLines;
}

void AgentProcess::Impl::terminate()
{
    if (m_state == State::Starting) {
        // Between fork and exec the child may still ignore the signal as we do.
        m_terminateWanted = true;
        return;
    }
    if (m_process.state() != QProcess::Running)
        return;
    ::kill(static_cast<pid_t>(m_process.processId()), SIGTERM);
    if (!m_killTimer.isActive())
        m_killTimer.start();
}

void AgentProcess::Impl::abandon()
{
    m_owner = nullptr;
    m_input.close();
    if (childLives()) {
        orphans().insert(this);
    } else if (m_delivering) {
        deleteLater();
    } else {
        delete this;
    }
}

AgentProcess::AgentProcess(QObject *parent)
    : QObject(parent)
    , m_impl(new Impl(this))
{
}

AgentProcess::~AgentProcess()
{
    m_impl->abandon();
}

void AgentProcess::start(const AgentLaunch &launch)
{
    m_impl->start(launch);
}

AgentProcess::State AgentProcess::state() const
{
    return m_impl->state();
}

qint64 AgentProcess::processId() const
{
    return m_impl->processId();
}

void AgentProcess::writeLine(const QByteArray &line)
{
    m_impl->writeLine(line);
}

bool AgentProcess::inputIsOpen() const
{
    return m_impl->input().isOpen();
}

qsizetype AgentProcess::droppedInputLines() const
{
    return m_impl->droppedLines();
}

void AgentProcess::closeInput()
{
    m_impl->input().close();
}

void AgentProcess::terminate()
{
    m_impl->terminate();
}

void AgentProcess::setKillGrace(std::chrono::milliseconds grace)
{
    m_impl->setKillGrace(grace);
}

void AgentProcess::release(std::unique_ptr<AgentProcess> process)
{
    process.reset();
}

} // namespace Vesk
