// Keeps an answer from a prompt that it was not meant for.
#pragma once

#include <QString>

#include <chrono>

namespace Vesk
{

class ProjectChat;

/**
 * A prompt that stands where another one has just been takes no answer for a moment: a click on its way, or
 * the second of a double click, would answer what nobody has read. Times are those of a steady clock.
 */
class PromptGuard
{
public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds pause {500};

    /** The prompt that is open now; empty for none. */
    void follow(const QString &requestId, Clock::time_point now = Clock::now());
    void noteAnswered(Clock::time_point now = Clock::now()) { m_answeredAt = now; }
    [[nodiscard]] bool takesAnswers(Clock::time_point now = Clock::now()) const
    {
        return now >= m_closedUntil;
    }

private:
    QString m_requestId;
    Clock::time_point m_answeredAt = Clock::time_point::min();
    Clock::time_point m_closedUntil = Clock::time_point::min();
};

/** The id of a session's open prompt of either sort; empty without one. */
[[nodiscard]] QString openPromptId(const ProjectChat &chat);

} // namespace Vesk
