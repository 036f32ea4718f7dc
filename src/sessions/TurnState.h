// The bookkeeping of a turn and what the last run left behind.
#pragma once

#include "sessions/SessionUsage.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace Vesk
{

/** Which rows the turn in flight writes to. Null ids stand for none. */
struct TurnState {
    QUuid currentAssistantID;         ///< the row that receives text now
    QUuid turnAssistantID;            ///< the turn's anchor row
    QList<QUuid> runAssistantIDs;     ///< every assistant row of the run
    QUuid currentToolGroupID;         ///< the row that takes the next tool call
    bool turnIsUserInitiated = false; ///< false for a turn that the child starts by itself
    bool interruptedByUser = false;
};

/** What is known of the last run when it is over. */
struct RunOutcome {
    std::optional<double> costUSD;
    std::optional<SessionTokenUsage> tokens;
    QStringList deniedTools; ///< one entry per denial
    QString error;           ///< why the run could not start; empty otherwise
    bool hadErrorResult = false;
    QString errorSubtype;
};

} // namespace Vesk
