#include "Player.h"

#include <QFile>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace ScriptedAgent
{

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

const QHash<QString, Player::Verb> &Player::verbs()
{
    static const QHash<QString, Verb> table = {
        {u"write"_s, &Player::write},
        {u"raw"_s, &Player::raw},
        {u"pause_ms"_s, &Player::pauseMs},
        {u"wait_for_file"_s, &Player::waitForFile},
        {u"expect"_s, &Player::expect},
        {u"choose"_s, &Player::choose},
        {u"repeat"_s, &Player::repeat},
        {u"wait_eof"_s, &Player::waitEof},
        {u"on_interrupt"_s, &Player::onInterrupt},
        {u"interrupts"_s, &Player::interrupts},
        {u"stderr"_s, &Player::standardError},
        {u"exit"_s, &Player::exit},
        {u"signal"_s, &Player::signal},
        {u"ignore_sigterm"_s, &Player::ignoreSigterm},
        {u"grandchild"_s, &Player::grandchild},
        {u"flood"_s, &Player::flood},
        {u"flood_stderr"_s, &Player::floodStderr},
        {u"close_stdout"_s, &Player::closeStdout},
        {u"close_stdin"_s, &Player::closeStdin},
        {u"deaf"_s, &Player::deaf},
        {u"user"_s, &Player::user},
        {u"init"_s, &Player::init},
        {u"think"_s, &Player::think},
        {u"say"_s, &Player::say},
        {u"stream_text"_s, &Player::streamText},
        {u"tool"_s, &Player::tool},
        {u"ask"_s, &Player::ask},
        {u"result"_s, &Player::result},
        {u"converse"_s, &Player::converseVerb},
    };
    return table;
}

Player::Player(const Record &record, RunFacts facts)
    : m_record(record)
    , m_facts(std::move(facts))
    , m_input(record)
{
    m_names = {{u"session_id"_s, m_facts.sessionId},
               {u"cwd"_s, m_facts.cwd},
               {u"model"_s, m_facts.model},
               {u"permission_mode"_s, m_facts.permissionMode},
               {u"run"_s, record.run()}};
}

void Player::playRun(const QJsonArray &steps)
{
    const Flow flow = play(steps);
    if (flow == Flow::Interrupted) {
        answerInterrupt();
        return;
    }
    while (flow == Flow::Go && !m_input.ended()) {
        m_input.wait({});
        if (m_input.isInterrupted())
            answerInterrupt();
    }
}

void Player::answerInterrupt()
{
    const QString id = m_input.takeInterrupt().value_or(QString());
    m_names.insert(u"interrupt_id"_s, id);
    writeOutLine(interruptReceipt(id));
    if (!m_openRequest.isEmpty())
        writeOutLine({{u"type"_s, u"control_cancel_request"_s}, {u"request_id"_s, m_openRequest}});
    if (m_onInterrupt) {
        playRun(*std::exchange(m_onInterrupt, std::nullopt));
        return;
    }
    writeOutLine(interruptedResult(m_facts));
    converse();
}

Player::Flow Player::play(const QJsonArray &steps)
{
    for (const auto step : steps) {
        const Flow flow = playStep(step.toObject());
        if (flow != Flow::Go)
            return flow;
    }
    return Flow::Go;
}

Player::Flow Player::playStep(const QJsonObject &step)
{
    for (auto it = step.begin(); it != step.end(); ++it) {
        const auto verb = verbs().constFind(it.key());
        if (verb != verbs().cend())
            return (this->**verb)(it.value(), step);
    }
    writeError(u"scripted agent: no such step: "_s + asText(step));
    ::_exit(64);
}

Player::Flow Player::pause(milliseconds time)
{
    const auto end = Clock::now() + time;
    while (true) {
        if (m_input.isInterrupted())
            return Flow::Interrupted;
        const auto left = std::chrono::ceil<milliseconds>(end - Clock::now());
        if (left.count() <= 0)
            return Flow::Go;
        m_input.wait(left);
    }
}

Player::Flow Player::await(const QJsonArray &patterns, QJsonObject *line, qsizetype *which)
{
    qsizetype looked = 0;
    while (true) {
        for (; looked < m_input.lines().size(); ++looked) {
            for (qsizetype i = 0; i < patterns.size(); ++i) {
                if (!matches(m_input.lines()[looked], patterns[i]))
                    continue;
                *line = m_input.lines().takeAt(looked);
                *which = i;
                return Flow::Go;
            }
        }
        if (m_input.isInterrupted())
            return Flow::Interrupted;
        if (m_input.ended())
            return Flow::InputEnded;
        m_input.wait({});
    }
}

void Player::save(const QJsonValue &paths, const QJsonObject &line)
{
    const QJsonObject names = paths.toObject();
    for (auto it = names.begin(); it != names.end(); ++it)
        m_names.insert(it.key(), valueAt(line, it.value().toString()));
}

Player::Flow Player::write(const QJsonValue &argument, const QJsonObject &)
{
    const QJsonValue line = filledIn(argument, m_names);
    writeOut(asText(line).toUtf8() + '\n');
    return Flow::Go;
}

Player::Flow Player::raw(const QJsonValue &argument, const QJsonObject &step)
{
    const QJsonValue base64 = argument.toObject().value(u"base64"_s);
    const QByteArray bytes = base64.isString() ? QByteArray::fromBase64(base64.toString().toLatin1())
                                               : filledIn(argument, m_names).toString().toUtf8();
    qsizetype from = 0;
    for (const auto cut : step.value(u"pieces"_s).toArray()) {
        const qsizetype to = qBound(from, qsizetype(cut.toInteger()), bytes.size());
        writeOut(QByteArrayView(bytes).sliced(from, to - from));
        from = to;
        const Flow flow = pause(milliseconds(step.value(u"gap_ms"_s).toInt(5)));
        if (flow != Flow::Go)
            return flow;
    }
    writeOut(QByteArrayView(bytes).sliced(from));
    return Flow::Go;
}

Player::Flow Player::pauseMs(const QJsonValue &argument, const QJsonObject &)
{
    return pause(milliseconds(argument.toInteger()));
}

Player::Flow Player::waitForFile(const QJsonValue &argument, const QJsonObject &)
{
    const QString path = filledIn(argument, m_names).toString();
    while (!QFile::exists(path)) {
        if (m_input.ended())
            return Flow::InputEnded;
        const Flow flow = pause(milliseconds(10));
        if (flow != Flow::Go)
            return flow;
    }
    return Flow::Go;
}

Player::Flow Player::expect(const QJsonValue &argument, const QJsonObject &step)
{
    QJsonObject line;
    qsizetype which = 0;
    const Flow flow = await({filledIn(argument, m_names)}, &line, &which);
    if (flow == Flow::Go)
        save(step.value(u"save"_s), line);
    return flow;
}

Player::Flow Player::choose(const QJsonValue &argument, const QJsonObject &)
{
    const QJsonArray roads = argument.toArray();
    QJsonArray patterns;
    for (const auto road : roads)
        patterns.append(filledIn(road.toObject().value(u"expect"_s), m_names));
    QJsonObject line;
    qsizetype which = 0;
    const Flow flow = await(patterns, &line, &which);
    if (flow != Flow::Go)
        return flow;
    const QJsonObject road = roads[which].toObject();
    save(road.value(u"save"_s), line);
    return play(road.value(u"steps"_s).toArray());
}

Player::Flow Player::repeat(const QJsonValue &argument, const QJsonObject &step)
{
    const QJsonArray steps = step.value(u"steps"_s).toArray();
    for (qint64 i = 0; i < argument.toInteger(); ++i) {
        m_names.insert(u"i"_s, i);
        const Flow flow = play(steps);
        if (flow != Flow::Go)
            return flow;
    }
    return Flow::Go;
}

Player::Flow Player::waitEof(const QJsonValue &, const QJsonObject &)
{
    while (!m_input.ended()) {
        if (m_input.isInterrupted())
            return Flow::Interrupted;
        m_input.wait({});
    }
    return Flow::Go;
}

Player::Flow Player::onInterrupt(const QJsonValue &argument, const QJsonObject &)
{
    m_onInterrupt = argument.toArray();
    return Flow::Go;
}

Player::Flow Player::interrupts(const QJsonValue &argument, const QJsonObject &)
{
    const QString word = argument.toString();
    m_input.setInterrupts(word == "ignore"_L1     ? InputLines::Interrupts::Ignore
                              : word == "line"_L1 ? InputLines::Interrupts::Line
                                                  : InputLines::Interrupts::Answer);
    return Flow::Go;
}

} // namespace ScriptedAgent
