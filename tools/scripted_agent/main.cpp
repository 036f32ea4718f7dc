// A stand-in for the agent program: it plays a scenario on its standard streams and notes what it was given.
#include "CommandLine.h"
#include "Player.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <unistd.h>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace ScriptedAgent;

namespace
{

constexpr qint64 tokensPerEarlierRun = 11'800;

QString environmentText(const char *name)
{
    return qEnvironmentVariable(name);
}

QString home()
{
    return environmentText("HOME");
}

/** The scenario; empty when there is none to play. One that cannot be read ends the program. */
QJsonObject readScenario()
{
    QString path = environmentText("SCRIPTED_AGENT_SCENARIO");
    if (path.isEmpty()) {
        path = home() + u"/.local/share/scripted-agent/scenario.json"_s;
        if (!QFile::exists(path))
            return {};
    }
    QFile file(path);
    QJsonParseError error;
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const auto document = QJsonDocument::fromJson(bytes, &error);
    if (!document.isObject()) {
        writeError(u"scripted agent: %1: %2"_s.arg(path, error.errorString()));
        ::_exit(64);
    }
    return document.object();
}

/** How many runs this conversation had before, kept in a file of its own. */
qsizetype countRunOf(const QString &sessionId, const QString &folder)
{
    QDir().mkpath(folder);
    QFile file(folder + u"/session-"_s + QString(sessionId).replace(u'/', u'_') + u".runs"_s);
    qsizetype runs = 0;
    if (file.open(QIODevice::ReadWrite)) {
        runs = file.readAll().toLongLong();
        file.seek(0);
        file.write(QByteArray::number(runs + 1));
    }
    return runs;
}

/** Which of the scenario's runs this is, from 0. */
qsizetype runIndex(const QJsonObject &scenario, const Record &record, const QString &sessionId)
{
    // A record folder belongs to one test, whose runs are counted; without one, every conversation has its
    // own.
    const bool bySession = record.run() == 0 || scenario.value(u"count"_s) == QJsonValue(u"session"_s);
    QString folder = environmentText("SCRIPTED_AGENT_RECORD");
    if (folder.isEmpty())
        folder = home() + u"/.local/state/scripted-agent"_s;
    return bySession ? countRunOf(sessionId, folder) : record.run() - 1;
}

QJsonArray stepsOfRun(const QJsonObject &scenario, qsizetype run)
{
    const QJsonArray runs = scenario.value(u"runs"_s).toArray();
    return runs.isEmpty() ? scenario.value(u"steps"_s).toArray() : runs[qMin(run, runs.size() - 1)].toArray();
}

/** A run that prints a text and ends, as in `-p /usage`. */
int printAnswer(const QJsonObject &scenario, const CommandLine &line)
{
    const QJsonValue answer = scenario.value(u"print"_s).toObject().value(line.prompt);
    if (!answer.isString()) {
        writeError(u"Error: Input must be provided either through stdin or as a prompt argument"_s);
        return 1;
    }
    writeOut(answer.toString().toUtf8());
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const auto inherited = InheritedSignals::read();
    struct sigaction ended = {};
    ended.sa_handler = [](int) { ::_exit(143); };
    ::sigaction(SIGTERM, &ended, nullptr);

    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const auto record = Record::begin(environmentText("SCRIPTED_AGENT_RECORD"), arguments, inherited);
    const auto [line, complaint] = parseCommandLine(arguments);
    if (complaint) {
        writeError(*complaint);
        return 1;
    }
    if (line.has(u"--version"_s)) {
        writeOut("2.1.197 (scripted agent)\n");
        return 0;
    }
    const QJsonObject scenario = readScenario();
    if (!line.streams())
        return printAnswer(scenario, line);

    RunFacts facts;
    facts.sessionId = line.value(u"--resume"_s, freshId());
    facts.cwd = QDir::currentPath();
    facts.model = scenario.value(u"model"_s).toString(u"claude-"_s + line.value(u"--model"_s, u"opus"_s));
    facts.permissionMode = line.value(u"--permission-mode"_s, u"default"_s);
    const qsizetype run = runIndex(scenario, record, facts.sessionId);
    // What a conversation has said before it resumes fills its context, more or less.
    facts.contextTokens =
        scenario.value(u"context_tokens"_s).toInteger(facts.contextTokens) + run * tokensPerEarlierRun;
    Player player(record, facts);
    if (scenario.isEmpty())
        player.converse();
    else
        player.playRun(stepsOfRun(scenario, run));
    return 0;
}
