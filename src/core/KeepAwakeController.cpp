#include "core/KeepAwakeController.h"

#include "core/AuditLogger.h"
#include "core/Preferences.h"

#include <algorithm>
#include <utility>

namespace Vesk
{

using namespace Qt::StringLiterals;

KeepAwakeController::KeepAwakeController(Preferences &preferences, AuditLogger &auditLogger,
                                         AcquireSleepInhibition acquire, QObject *parent)
    : QObject(parent)
    , m_preferences(preferences)
    , m_auditLogger(auditLogger)
    , m_acquire(std::move(acquire))
{
    connect(&m_preferences, &Preferences::changed, this, [this](const QString &key) {
        if (key == PreferenceKey::keepAwake)
            reconcile();
    });
}

void KeepAwakeController::noteRunStarted()
{
    ++m_runningCount;
    reconcile();
}

void KeepAwakeController::noteRunEnded()
{
    m_runningCount = std::max(m_runningCount - 1, 0);
    reconcile();
}

bool KeepAwakeController::isWanted() const
{
    return m_runningCount > 0 && m_preferences.keepAwake();
}

void KeepAwakeController::reconcile()
{
    if (!isWanted()) {
        m_activity.reset();
        return;
    }
    if (m_activity || m_acquiring)
        return;
    m_acquiring = true;
    m_acquire(this, u"orvane: 인앱 에이전트 세션 실행 중"_s,
              [this](const Result<SleepInhibition> &result) { onAcquired(result); });
}

void KeepAwakeController::onAcquired(const Result<SleepInhibition> &result)
{
    m_acquiring = false;
    if (!result) {
        // The runs go on without it; one line tells why the machine may fall asleep.
        if (!std::exchange(m_saidUnavailable, true))
            m_auditLogger.log(AuditEvent::info(u"keep-awake unavailable: "_s + result.error().text));
        return;
    }
    // The last run may have ended while the call was under way: then it is let go at once.
    if (isWanted())
        m_activity = *result;
}

} // namespace Vesk
