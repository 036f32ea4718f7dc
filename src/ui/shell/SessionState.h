// What the mark of a session says, and the words beside it.
#pragma once

#include "ui/controls/SessionMarks.h"

#include <QDateTime>
#include <QString>

namespace Vesk
{

/** A later one of the kinds hides an earlier one. */
using SessionState = SessionMarks::Kind;

/** All that the mark of a session depends on. */
struct SessionFacts {
    bool running = false;
    bool unseen = false;     ///< a run ended and its tab has not been looked at since
    bool failed = false;     ///< that run ended in an error
    int backgroundTasks = 0; ///< running ones
    QString waitingTool {};  ///< what the open permission request calls its tool; empty without one
    int waitingQuestions = 0;
    QDateTime waitingSince {}; ///< when the open prompt came
    QDateTime runStartedAt {};
    QDateTime lastActiveAt {}; ///< the end of the last run, or the opening of a session that never ran
};

[[nodiscard]] SessionState sessionState(const SessionFacts &facts);

/** It waits for the person: the two states that stand in the "내 차례" box. */
[[nodiscard]] constexpr bool isMyTurn(SessionState state)
{
    return state == SessionState::WaitApproval || state == SessionState::WaitAnswer;
}

/** Closing it would end something: a run, a prompt, background work. */
[[nodiscard]] bool hasLiveWork(const SessionFacts &facts);

/** The text at the right of a session's row: elapsed time, age, number of background tasks, or a date. */
[[nodiscard]] QString sessionTimeText(const SessionFacts &facts, const QDateTime &now);

/** The state in words, for assistive technology and tool tips. */
[[nodiscard]] QString sessionStateText(const SessionFacts &facts);

/** Why it is the person's turn and for how long, as in "Bash 승인 대기 1분"; empty when it is not. */
[[nodiscard]] QString myTurnReason(const SessionFacts &facts, const QDateTime &now);

/** `m:ss`, from an hour on `h:mm:ss`; a clock that went back counts as zero. */
[[nodiscard]] QString elapsedText(const QDateTime &since, const QDateTime &now);

/** "방금" under a minute, then whole minutes, hours or days. */
[[nodiscard]] QString ageText(const QDateTime &since, const QDateTime &now);

/** A moment as a list shows it: time today, "어제", the weekday within a week, then the date. */
[[nodiscard]] QString momentText(const QDateTime &moment, const QDateTime &now);

} // namespace Vesk
