// The agent's three standard streams: unbuffered, so that a sudden death leaves exactly what was written.
#pragma once

#include "Record.h"

#include <QJsonObject>
#include <QList>

#include <chrono>
#include <optional>

namespace ScriptedAgent
{

void writeOut(QByteArrayView bytes);
void writeOutLine(const QJsonObject &line);
void writeError(const QString &line);

/** Standard input as lines of JSON, in the order of their arrival. */
class InputLines
{
public:
    enum class Interrupts { Answer, Line, Ignore }; ///< what an interrupt request becomes

    explicit InputLines(const Record &record)
        : m_record(record)
    {
    }

    /** Reads what comes within `limit` (none: until something comes or the stream ends). A line that is no
       JSON object ends the program with code 1, as the agent program does. */
    void wait(std::optional<std::chrono::milliseconds> limit);

    void setInterrupts(Interrupts interrupts) { m_interrupts = interrupts; }
    /** From now on nothing is read any more. */
    void stopReading() { m_reading = false; }

    [[nodiscard]] bool ended() const { return m_ended; }
    /** The id of an interrupt request that nobody took yet. */
    [[nodiscard]] std::optional<QString> takeInterrupt() { return std::exchange(m_interrupt, std::nullopt); }
    [[nodiscard]] bool isInterrupted() const { return m_interrupt.has_value(); }
    [[nodiscard]] QList<QJsonObject> &lines() { return m_lines; }

private:
    void noteLine(const QByteArray &line);

    const Record &m_record;
    QByteArray m_rest;
    QList<QJsonObject> m_lines;
    std::optional<QString> m_interrupt;
    Interrupts m_interrupts = Interrupts::Answer;
    bool m_reading = true;
    bool m_ended = false;
};

} // namespace ScriptedAgent
