// Holds the machine's idle sleep off while a session runs.
#pragma once

#include "base/Result.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace Vesk
{

class AuditLogger;
class Preferences;

/** Alive means inhibited: the last copy that goes releases the inhibition. */
using SleepInhibition = std::shared_ptr<void>;

/** Asks for an inhibition without blocking; `done` comes once, unless `context` has died before. */
using AcquireSleepInhibition = std::function<void(QObject *context, const QString &reason,
                                                  std::function<void(Result<SleepInhibition>)> done)>;

/** One for the program. Holds at most one inhibition, and none without a running session. Main thread only.
 */
class KeepAwakeController : public QObject
{
    Q_OBJECT

public:
    KeepAwakeController(Preferences &preferences, AuditLogger &auditLogger, AcquireSleepInhibition acquire,
                        QObject *parent = nullptr);

    void noteRunStarted();
    void noteRunEnded();

    /** Brings what is held in line with the preference and the count; also runs when the preference changes.
     */
    void reconcile();

    [[nodiscard]] int runningCount() const { return m_runningCount; }
    [[nodiscard]] bool holdsActivity() const { return m_activity != nullptr; }

private:
    [[nodiscard]] bool isWanted() const;
    void onAcquired(const Result<SleepInhibition> &result);

    Preferences &m_preferences;
    AuditLogger &m_auditLogger;
    AcquireSleepInhibition m_acquire;
    SleepInhibition m_activity;
    int m_runningCount = 0;
    bool m_acquiring = false;
    bool m_saidUnavailable = false;
};

} // namespace Vesk
