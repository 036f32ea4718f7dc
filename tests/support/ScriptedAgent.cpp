#include "support/ScriptedAgent.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <csignal>

using namespace Qt::StringLiterals;

namespace Vesk::Test
{

namespace
{

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

Scenario &Scenario::step(const QJsonObject &step)
{
    m_steps.append(step);
    return *this;
}

Scenario &Scenario::user()
{
    return step({{u"user"_s, true}});
}
Scenario &Scenario::user(const QString &text)
{
    return step({{u"user"_s, text}});
}
Scenario &Scenario::init(const QJsonObject &over)
{
    return step({{u"init"_s, over}});
}

Scenario &Scenario::say(const QString &text, int chunk, int delayMs)
{
    return step({{u"say"_s, text}, {u"chunk"_s, chunk}, {u"delay_ms"_s, delayMs}});
}

Scenario &Scenario::tool(const QString &name, const QJsonObject &input, const QString &result, bool isError)
{
    return step(
        {{u"tool"_s,
          QJsonObject {
              {u"name"_s, name}, {u"input"_s, input}, {u"result"_s, result}, {u"is_error"_s, isError}}}});
}

Scenario &Scenario::ask(const QString &requestId, const QString &tool, const QJsonObject &input,
                        const QJsonObject &request, const Scenario &allowed, const Scenario &denied)
{
    return step({{u"ask"_s,
                  QJsonObject {{u"request_id"_s, requestId},
                               {u"name"_s, tool},
                               {u"input"_s, input},
                               {u"request"_s, request},
                               {u"result"_s, u"done"_s},
                               {u"allow"_s, allowed.steps()},
                               {u"deny"_s, denied.steps()}}}});
}

Scenario &Scenario::question(const QString &requestId, const QJsonArray &questions)
{
    return ask(requestId, u"AskUserQuestion"_s, {{u"questions"_s, questions}});
}

Scenario &Scenario::result(const QString &text, const QJsonObject &over)
{
    QJsonObject line = over;
    line.insert(u"result"_s, text);
    return step({{u"result"_s, line}});
}

Scenario &Scenario::resultError(const QString &subtype, const QString &text)
{
    return result(text, {{u"subtype"_s, subtype}, {u"is_error"_s, true}});
}

Scenario &Scenario::turn(const QString &answer)
{
    return user().init().say(answer).result(answer);
}

Scenario &Scenario::write(const QJsonObject &line)
{
    return step({{u"write"_s, line}});
}
Scenario &Scenario::writeText(const QString &line)
{
    return step({{u"write"_s, line}});
}

Scenario &Scenario::raw(const QByteArray &bytes, const QList<int> &cuts, int pauseMs)
{
    QJsonArray pieces;
    for (const int cut : cuts)
        pieces.append(cut);
    const QJsonObject base64 = {{u"base64"_s, QString::fromLatin1(bytes.toBase64())}};
    return step({{u"raw"_s, base64}, {u"pieces"_s, pieces}, {u"gap_ms"_s, pauseMs}});
}

Scenario &Scenario::pause(int ms)
{
    return step({{u"pause_ms"_s, ms}});
}

Scenario &Scenario::waitForFile(const QString &path)
{
    return step({{u"wait_for_file"_s, path}});
}

Scenario &Scenario::expect(const QJsonObject &pattern, const QJsonObject &names)
{
    return step({{u"expect"_s, pattern}, {u"save"_s, names}});
}

Scenario &Scenario::onInterrupt(const Scenario &steps)
{
    return step({{u"on_interrupt"_s, steps.steps()}});
}
Scenario &Scenario::ignoreInterrupts()
{
    return step({{u"interrupts"_s, u"ignore"_s}});
}
Scenario &Scenario::waitEof()
{
    return step({{u"wait_eof"_s, true}});
}

Scenario &Scenario::repeat(int times, const Scenario &steps)
{
    return step({{u"repeat"_s, times}, {u"steps"_s, steps.steps()}});
}

Scenario &Scenario::standardError(const QString &line)
{
    return step({{u"stderr"_s, line}});
}
Scenario &Scenario::exit(int code)
{
    return step({{u"exit"_s, code}});
}
Scenario &Scenario::dieBySignal(const QString &name)
{
    return step({{u"signal"_s, name}});
}
Scenario &Scenario::ignoreSigterm()
{
    return step({{u"ignore_sigterm"_s, true}});
}

Scenario &Scenario::grandchild(int seconds, bool holdsPipe)
{
    return step({{u"grandchild"_s, QJsonObject {{u"seconds"_s, seconds}, {u"holds_pipe"_s, holdsPipe}}}});
}

Scenario &Scenario::flood(qint64 bytes)
{
    return step({{u"flood"_s, QJsonObject {{u"bytes"_s, bytes}}}});
}
Scenario &Scenario::floodStandardError(int lines)
{
    return step({{u"flood_stderr"_s, lines}});
}
Scenario &Scenario::deaf()
{
    return step({{u"deaf"_s, true}});
}
Scenario &Scenario::closeInput()
{
    return step({{u"close_stdin"_s, true}});
}
Scenario &Scenario::closeOutput()
{
    return step({{u"close_stdout"_s, true}});
}

ScriptedAgent::ScriptedAgent()
{
    QDir(m_folder.path()).mkpath(u"home/.local/bin"_s);
    QDir(m_folder.path()).mkpath(u"project"_s);
    QFile::link(QStringLiteral(VESK_SCRIPTED_AGENT), program());
    setRun(Scenario().turn(u"네."_s));
}

ScriptedAgent::~ScriptedAgent()
{
    for (int number = 1; number <= runCount(); ++number) {
        if (const auto pid = static_cast<pid_t>(grandchildOf(number)); pid > 0)
            ::kill(pid, SIGKILL);
    }
}

void ScriptedAgent::setRuns(const QList<Scenario> &runs)
{
    QJsonArray list;
    for (const Scenario &run : runs)
        list.append(run.steps());
    QFile file(m_folder.filePath(u"scenario.json"_s));
    const QByteArray bytes = QJsonDocument(QJsonObject {{u"runs"_s, list}}).toJson();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("the scenario cannot be written");
}

QString ScriptedAgent::home() const
{
    return m_folder.filePath(u"home"_s);
}
QString ScriptedAgent::program() const
{
    return home() + u"/.local/bin/claude"_s;
}
QString ScriptedAgent::projectFolder() const
{
    return m_folder.filePath(u"project"_s);
}

QProcessEnvironment ScriptedAgent::environment() const
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"HOME"_s, home());
    environment.insert(u"SCRIPTED_AGENT_SCENARIO"_s, m_folder.filePath(u"scenario.json"_s));
    environment.insert(u"SCRIPTED_AGENT_RECORD"_s, m_folder.filePath(u"record"_s));
    return environment;
}

QStringList ScriptedAgent::arguments()
{
    return {u"-p"_s,          u"--input-format"_s, u"stream-json"_s, u"--output-format"_s,
            u"stream-json"_s, u"--verbose"_s};
}

QString ScriptedAgent::recordPath(int number, const QString &suffix) const
{
    return m_folder.filePath(u"record/run-%1.%2"_s.arg(QString::number(number), suffix));
}

int ScriptedAgent::runCount() const
{
    int count = 0;
    while (QFile::exists(recordPath(count + 1, u"json"_s)))
        ++count;
    return count;
}

QJsonObject ScriptedAgent::run(int number) const
{
    return QJsonDocument::fromJson(contentOf(recordPath(number, u"json"_s))).object();
}

QStringList ScriptedAgent::argumentsOf(int number) const
{
    QStringList arguments;
    for (const auto argument : run(number).value(u"argv"_s).toArray())
        arguments.append(argument.toString());
    return arguments;
}

QByteArray ScriptedAgent::inputOf(int number) const
{
    return contentOf(recordPath(number, u"stdin"_s));
}

QList<QJsonObject> ScriptedAgent::inputLinesOf(int number) const
{
    QList<QJsonObject> lines;
    const QByteArray input = inputOf(number);
    for (const QByteArray &line : input.left(input.lastIndexOf('\n') + 1).split('\n')) {
        if (!line.isEmpty())
            lines.append(QJsonDocument::fromJson(line).object());
    }
    return lines;
}

qint64 ScriptedAgent::grandchildOf(int number) const
{
    return contentOf(recordPath(number, u"grandchild"_s)).toLongLong();
}

QByteArray userMessage(const QString &text)
{
    const QJsonObject message = {{u"role"_s, u"user"_s}, {u"content"_s, text}};
    return QJsonDocument(QJsonObject {{u"type"_s, u"user"_s}, {u"message"_s, message}})
        .toJson(QJsonDocument::Compact);
}

} // namespace Vesk::Test
