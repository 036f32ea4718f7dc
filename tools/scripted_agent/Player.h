// Plays the steps of a scenario on the standard streams.
#pragma once

#include "Record.h"
#include "Streams.h"
#include "Values.h"
#include "Wire.h"

#include <QJsonArray>

#include <chrono>
#include <optional>

namespace ScriptedAgent
{

class Player
{
public:
    Player(const Record &record, RunFacts facts);

    /** Plays a run to its end: the steps, an interrupt if one comes, then whatever is left until the end of
     * input. */
    void playRun(const QJsonArray &steps);
    /** Answers every message, until the end of input: what the agent does without a scenario. */
    void converse();

private:
    enum class Flow { Go, Interrupted, InputEnded };
    using Verb = Flow (Player::*)(const QJsonValue &argument, const QJsonObject &step);

    static const QHash<QString, Verb> &verbs();

    [[nodiscard]] Flow play(const QJsonArray &steps);
    [[nodiscard]] Flow playStep(const QJsonObject &step);
    [[nodiscard]] Flow pause(std::chrono::milliseconds time);
    void answerInterrupt();
    /** Waits for a line that one of the patterns matches, and takes it. */
    [[nodiscard]] Flow await(const QJsonArray &patterns, QJsonObject *line, qsizetype *which);
    void save(const QJsonValue &paths, const QJsonObject &line);
    [[nodiscard]] Flow speak(const QString &text, qsizetype chunk, std::chrono::milliseconds delay);
    [[nodiscard]] Flow answerMessage(const QString &prompt);

    // Bytes and waiting (PlayerBasics.cpp)
    Flow write(const QJsonValue &argument, const QJsonObject &step);
    Flow raw(const QJsonValue &argument, const QJsonObject &step);
    Flow pauseMs(const QJsonValue &argument, const QJsonObject &step);
    Flow waitForFile(const QJsonValue &argument, const QJsonObject &step);
    Flow expect(const QJsonValue &argument, const QJsonObject &step);
    Flow choose(const QJsonValue &argument, const QJsonObject &step);
    Flow repeat(const QJsonValue &argument, const QJsonObject &step);
    Flow waitEof(const QJsonValue &argument, const QJsonObject &step);
    Flow onInterrupt(const QJsonValue &argument, const QJsonObject &step);
    Flow interrupts(const QJsonValue &argument, const QJsonObject &step);

    // Misbehaviour (PlayerMischief.cpp)
    Flow standardError(const QJsonValue &argument, const QJsonObject &step);
    Flow exit(const QJsonValue &argument, const QJsonObject &step);
    Flow signal(const QJsonValue &argument, const QJsonObject &step);
    Flow ignoreSigterm(const QJsonValue &argument, const QJsonObject &step);
    Flow grandchild(const QJsonValue &argument, const QJsonObject &step);
    Flow flood(const QJsonValue &argument, const QJsonObject &step);
    Flow floodStderr(const QJsonValue &argument, const QJsonObject &step);
    Flow closeStdout(const QJsonValue &argument, const QJsonObject &step);
    Flow closeStdin(const QJsonValue &argument, const QJsonObject &step);
    Flow deaf(const QJsonValue &argument, const QJsonObject &step);

    // The parts of a turn (PlayerTurns.cpp)
    Flow user(const QJsonValue &argument, const QJsonObject &step);
    Flow init(const QJsonValue &argument, const QJsonObject &step);
    Flow think(const QJsonValue &argument, const QJsonObject &step);
    Flow say(const QJsonValue &argument, const QJsonObject &step);
    Flow streamText(const QJsonValue &argument, const QJsonObject &step);
    Flow tool(const QJsonValue &argument, const QJsonObject &step);
    Flow ask(const QJsonValue &argument, const QJsonObject &step);
    Flow result(const QJsonValue &argument, const QJsonObject &step);
    Flow converseVerb(const QJsonValue &argument, const QJsonObject &step);

    const Record &m_record;
    RunFacts m_facts;
    InputLines m_input;
    Names m_names;
    std::optional<QJsonArray> m_onInterrupt;
    QString m_openRequest; ///< of a permission or question that waits for its answer
    QString m_lastText;
    int m_tools = 0;
};

} // namespace ScriptedAgent
