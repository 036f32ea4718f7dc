#include "Record.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcessEnvironment>

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

using namespace Qt::StringLiterals;

namespace ScriptedAgent
{

namespace
{

QJsonObject environmentObject()
{
    QJsonObject out;
    const auto environment = QProcessEnvironment::systemEnvironment();
    for (const QString &key : environment.keys())
        out.insert(key, environment.value(key));
    return out;
}

void writeWhole(const QString &path, const QByteArray &bytes)
{
    // A reader that sees the file sees all of it.
    QFile file(path + u".new"_s);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()) {
        file.close();
        QFile::rename(file.fileName(), path);
    }
}

} // namespace

InheritedSignals InheritedSignals::read()
{
    InheritedSignals out;
    sigset_t mask;
    ::sigprocmask(SIG_SETMASK, nullptr, &mask);
    for (int signal = 1; signal < 32; ++signal) {
        struct sigaction action = {};
        const QString name = QString::fromLatin1(::sigabbrev_np(signal));
        if (::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN)
            out.ignored.append(name);
        if (::sigismember(&mask, signal) == 1)
            out.blocked.append(name);
    }
    return out;
}

Record Record::begin(const QString &folder, const QStringList &arguments, const InheritedSignals &inherited)
{
    Record record;
    if (folder.isEmpty())
        return record;
    QDir().mkpath(folder);
    // Several agents may begin at once: the one that makes the input file has the number.
    for (int run = 1; record.m_input < 0 && run < 100'000; ++run) {
        record.m_run = run;
        record.m_base = folder + u"/run-%1"_s.arg(run);
        const QByteArray path = QFile::encodeName(record.m_base + u".stdin"_s);
        record.m_input = ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC, 0600);
    }
    const QJsonObject notes = {
        {u"argv"_s, QJsonArray::fromStringList(arguments)},
        {u"environment"_s, environmentObject()},
        {u"cwd"_s, QDir::currentPath()},
        {u"pid"_s, qint64(::getpid())},
        {u"pgid"_s, qint64(::getpgid(0))},
        {u"ignored_signals"_s, QJsonArray::fromStringList(inherited.ignored)},
        {u"blocked_signals"_s, QJsonArray::fromStringList(inherited.blocked)},
    };
    writeWhole(record.m_base + u".json"_s, QJsonDocument(notes).toJson());
    return record;
}

void Record::noteInput(QByteArrayView bytes) const
{
    if (m_input >= 0 && ::write(m_input, bytes.data(), static_cast<size_t>(bytes.size())) < 0)
        ::_exit(70); // a record that lies is worse than none
}

void Record::noteGrandchild(qint64 pid) const
{
    if (m_run > 0)
        writeWhole(m_base + u".grandchild"_s, QByteArray::number(pid));
}

} // namespace ScriptedAgent
