#include "Player.h"

using namespace Qt::StringLiterals;

namespace ScriptedAgent
{

using std::chrono::milliseconds;

Player::Flow Player::user(const QJsonValue &argument, const QJsonObject &)
{
    QJsonObject line;
    qsizetype which = 0;
    const QJsonValue content = argument.isString() ? filledIn(argument, m_names) : QJsonValue(u"*"_s);
    const QJsonObject pattern = {{u"type"_s, u"user"_s},
                                 {u"message"_s, QJsonObject {{u"content"_s, content}}}};
    const Flow flow = await({pattern}, &line, &which);
    if (flow == Flow::Go)
        m_names.insert(u"prompt"_s, valueAt(line, u"message.content"_s));
    return flow;
}

Player::Flow Player::init(const QJsonValue &argument, const QJsonObject &)
{
    const QJsonObject line = merged(initLine(m_facts), filledIn(argument, m_names).toObject());
    m_facts.sessionId = line.value(u"session_id"_s).toString();
    m_names.insert(u"session_id"_s, m_facts.sessionId);
    writeOutLine(line);
    writeOutLine(statusLine(m_facts));
    return Flow::Go;
}

Player::Flow Player::think(const QJsonValue &argument, const QJsonObject &)
{
    // A thought is a trickle of deltas; what they say is shown nowhere.
    for (qint64 left = argument.toInteger(); left > 0; left -= 100) {
        writeOutLine(streamEvent(m_facts, thinkingDelta(u"…"_s)));
        const Flow flow = pause(milliseconds(qMin<qint64>(left, 100)));
        if (flow != Flow::Go)
            return flow;
    }
    return Flow::Go;
}

Player::Flow Player::speak(const QString &text, qsizetype chunk, milliseconds delay)
{
    for (qsizetype from = 0; from < text.size();) {
        qsizetype to = qMin(text.size(), from + qMax<qsizetype>(chunk, 1));
        if (to < text.size() && text[to].isLowSurrogate())
            ++to;
        writeOutLine(streamEvent(m_facts, textDelta(text.mid(from, to - from))));
        from = to;
        const Flow flow = pause(delay);
        if (flow != Flow::Go)
            return flow;
    }
    return Flow::Go;
}

Player::Flow Player::streamText(const QJsonValue &argument, const QJsonObject &step)
{
    return speak(filledIn(argument, m_names).toString(), step.value(u"chunk"_s).toInt(8),
                 milliseconds(step.value(u"delay_ms"_s).toInt(0)));
}

Player::Flow Player::say(const QJsonValue &argument, const QJsonObject &step)
{
    m_lastText = filledIn(argument, m_names).toString();
    m_facts.contextTokens += 300 + m_lastText.size();
    m_facts.costUsd += 0.0175;
    writeOutLine(streamEvent(m_facts, {{u"type"_s, u"message_start"_s}}));
    writeOutLine(streamEvent(m_facts, {{u"type"_s, u"content_block_start"_s}, {u"index"_s, 0}}));
    const Flow flow =
        speak(m_lastText, step.value(u"chunk"_s).toInt(8), milliseconds(step.value(u"delay_ms"_s).toInt(0)));
    if (flow != Flow::Go)
        return flow;
    writeOutLine(assistantLine(m_facts, {{u"type"_s, u"text"_s}, {u"text"_s, m_lastText}}));
    writeOutLine(streamEvent(m_facts, {{u"type"_s, u"content_block_stop"_s}, {u"index"_s, 0}}));
    writeOutLine(streamEvent(m_facts, {{u"type"_s, u"message_stop"_s}}));
    return Flow::Go;
}

Player::Flow Player::tool(const QJsonValue &argument, const QJsonObject &)
{
    const QJsonObject tool = filledIn(argument, m_names).toObject();
    const QString id = tool.value(u"id"_s).toString(u"toolu_%1_%2"_s.arg(m_record.run()).arg(++m_tools));
    m_facts.contextTokens += 900;
    writeOutLine(assistantLine(
        m_facts, toolUse(id, tool.value(u"name"_s).toString(), tool.value(u"input"_s).toObject())));
    const Flow flow = pause(milliseconds(tool.value(u"ms"_s).toInt(0)));
    if (flow != Flow::Go)
        return flow;
    writeOutLine(
        toolResultLine(m_facts, id, tool.value(u"result"_s).toString(), tool.value(u"is_error"_s).toBool()));
    return Flow::Go;
}

Player::Flow Player::ask(const QJsonValue &argument, const QJsonObject &)
{
    const QJsonObject asked = argument.toObject(); // the roads' names are filled in when they are played
    const QString name = asked.value(u"name"_s).toString();
    const QJsonObject input = filledIn(asked.value(u"input"_s), m_names).toObject();
    const QString toolId = asked.value(u"id"_s).toString(u"toolu_%1_%2"_s.arg(m_record.run()).arg(++m_tools));
    m_openRequest = asked.value(u"request_id"_s).toString(freshId());
    writeOutLine(assistantLine(m_facts, toolUse(toolId, name, input)));
    const QJsonObject request = merged({{u"subtype"_s, u"can_use_tool"_s},
                                        {u"tool_name"_s, name},
                                        {u"display_name"_s, name},
                                        {u"input"_s, input},
                                        {u"tool_use_id"_s, toolId}},
                                       filledIn(asked.value(u"request"_s), m_names).toObject());
    writeOutLine(
        {{u"type"_s, u"control_request"_s}, {u"request_id"_s, m_openRequest}, {u"request"_s, request}});

    QJsonObject line;
    qsizetype which = 0;
    const QJsonObject answer = {{u"type"_s, u"control_response"_s},
                                {u"response"_s, QJsonObject {{u"request_id"_s, m_openRequest}}}};
    const Flow flow = await({answer}, &line, &which);
    if (flow == Flow::Interrupted)
        return flow;
    m_openRequest.clear();
    const QJsonValue decision = valueAt(line, u"response.response"_s);
    m_names.insert(u"decision"_s, decision);
    m_names.insert(u"answers"_s, valueAt(decision, u"updatedInput.answers"_s));
    // With the input closed nobody can answer: the tool is refused and the turn goes on. So is one that is
    // allowed without an input to run with.
    const bool allowed =
        decision[u"behavior"] == QJsonValue(u"allow"_s) && decision[u"updatedInput"].isObject();
    if (!allowed) {
        writeOutLine(toolResultLine(
            m_facts, toolId, decision[u"message"].toString(u"The user doesn't want to proceed."_s), true));
        return play(asked.value(u"deny"_s).toArray());
    }
    const Flow worked = pause(milliseconds(asked.value(u"ms"_s).toInt(0)));
    if (worked != Flow::Go)
        return worked;
    const QJsonValue result = filledIn(asked.value(u"result"_s).toString(u"${answers}"_s), m_names);
    writeOutLine(toolResultLine(m_facts, toolId, asText(result), asked.value(u"is_error"_s).toBool()));
    return play(asked.value(u"allow"_s).toArray());
}

Player::Flow Player::result(const QJsonValue &argument, const QJsonObject &)
{
    // A text, or keys to put over the ordinary ones; without either, what was said last.
    const QJsonValue given = filledIn(argument, m_names);
    writeOutLine(merged(resultLine(m_facts, given.toString(m_lastText)), given.toObject()));
    return Flow::Go;
}

Player::Flow Player::converseVerb(const QJsonValue &, const QJsonObject &)
{
    converse();
    return Flow::InputEnded;
}

Player::Flow Player::answerMessage(const QString &prompt)
{
    (void)init({}, {});
    const QString answer = u"안녕하세요! 이렇게 들었습니다:\n\n> "_s
        + QString(prompt).replace(u'\n', u"\n> "_s)
        + u"\n\n저는 **대본대로 움직이는** 작은 에이전트라 여기까지만 답할 수 있습니다."_s;
    Flow flow = say(answer, {{u"chunk"_s, 4}, {u"delay_ms"_s, 15}});
    if (flow == Flow::Go)
        flow = result(answer, {});
    return flow;
}

void Player::converse()
{
    m_openRequest.clear();
    while (true) {
        Flow flow = user({}, {});
        if (flow == Flow::Go)
            flow = answerMessage(m_names.value(u"prompt"_s).toString());
        if (flow == Flow::InputEnded)
            return;
        if (flow == Flow::Interrupted) {
            writeOutLine(interruptReceipt(m_input.takeInterrupt().value_or(QString())));
            writeOutLine(interruptedResult(m_facts));
        }
    }
}

} // namespace ScriptedAgent
