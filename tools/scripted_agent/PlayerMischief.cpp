#include "Player.h"

#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

using namespace Qt::StringLiterals;

namespace ScriptedAgent
{

Player::Flow Player::standardError(const QJsonValue &argument, const QJsonObject &)
{
    writeError(asText(filledIn(argument, m_names)));
    return Flow::Go;
}

Player::Flow Player::exit(const QJsonValue &argument, const QJsonObject &)
{
    ::_exit(argument.toInt());
}

Player::Flow Player::signal(const QJsonValue &argument, const QJsonObject &)
{
    static const QHash<QString, int> signalsByName = {
        {u"SEGV"_s, SIGSEGV}, {u"KILL"_s, SIGKILL}, {u"TERM"_s, SIGTERM},
        {u"ABRT"_s, SIGABRT}, {u"INT"_s, SIGINT},   {u"STOP"_s, SIGSTOP},
    };
    const int number = signalsByName.value(argument.toString(), SIGKILL);
    const rlimit noCore = {0, 0};
    (void)::setrlimit(RLIMIT_CORE, &noCore);
    if (number != SIGKILL && number != SIGSTOP)
        (void)::signal(number, SIG_DFL);
    ::kill(::getpid(), number);
    return Flow::Go;
}

Player::Flow Player::ignoreSigterm(const QJsonValue &argument, const QJsonObject &)
{
    if (argument.toBool())
        (void)::signal(SIGTERM, SIG_IGN);
    return Flow::Go;
}

Player::Flow Player::grandchild(const QJsonValue &argument, const QJsonObject &)
{
    const bool holdsPipe = argument[u"holds_pipe"].toBool();
    const auto seconds = static_cast<unsigned>(argument[u"seconds"].toInt(30));
    const pid_t pid = ::fork();
    if (pid == 0) {
        (void)::signal(SIGTERM, SIG_DFL);
        if (!holdsPipe) {
            ::close(STDIN_FILENO);
            ::close(STDOUT_FILENO);
            ::close(STDERR_FILENO);
        }
        ::sleep(seconds);
        ::_exit(0);
    }
    m_record.noteGrandchild(pid);
    return Flow::Go;
}

Player::Flow Player::flood(const QJsonValue &argument, const QJsonObject &)
{
    const QByteArray block(1024 * 1024, 'x');
    for (qint64 left = argument[u"bytes"].toInteger(); left > 0; left -= block.size())
        writeOut(QByteArrayView(block).first(qMin<qint64>(left, block.size())));
    return Flow::Go;
}

Player::Flow Player::floodStderr(const QJsonValue &argument, const QJsonObject &)
{
    for (qint64 i = 1; i <= argument.toInteger(); ++i)
        writeError(u"complaint %1"_s.arg(i));
    return Flow::Go;
}

Player::Flow Player::closeStdout(const QJsonValue &, const QJsonObject &)
{
    ::close(STDOUT_FILENO);
    return Flow::Go;
}

Player::Flow Player::closeStdin(const QJsonValue &, const QJsonObject &)
{
    m_input.stopReading();
    ::close(STDIN_FILENO);
    return Flow::Go;
}

Player::Flow Player::deaf(const QJsonValue &, const QJsonObject &)
{
    m_input.stopReading();
    return Flow::Go;
}

} // namespace ScriptedAgent
