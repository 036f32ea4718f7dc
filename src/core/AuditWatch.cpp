#include "core/AuditWatch.h"

#include <utility>

namespace Vesk
{

AuditWatch::AuditWatch(AuditLogger &logger, QObject *parent)
    : QObject(parent)
    , m_logger(logger)
{
    connect(&m_timer, &QTimer::timeout, this, &AuditWatch::refreshAuditWriteFailure);
}

void AuditWatch::startAuditWatch(std::chrono::milliseconds interval)
{
    m_timer.start(interval);
}

void AuditWatch::stopAuditWatch()
{
    m_timer.stop();
}

void AuditWatch::noteBatch()
{
    m_recentLogs = m_logger.recent(recentLimit);
    Q_EMIT recentLogsChanged();
    refreshAuditWriteFailure();
}

void AuditWatch::refreshAuditWriteFailure()
{
    auto failure = AuditWriteFailure::observed(m_logger.lastFailure(), m_logger.failureCount());
    if (!failure)
        m_auditWriteFailureDismissedAtCount.reset();
    else if (m_auditWriteFailureDismissedAtCount && failure->count <= *m_auditWriteFailureDismissedAtCount)
        failure.reset();
    publish(std::move(failure));
}

void AuditWatch::dismissAuditWriteFailureBanner()
{
    m_auditWriteFailureDismissedAtCount =
        m_auditWriteFailure ? m_auditWriteFailure->count : m_logger.failureCount();
    publish(std::nullopt);
}

void AuditWatch::publish(std::optional<AuditWriteFailure> failure)
{
    if (m_auditWriteFailure == failure)
        return;
    m_auditWriteFailure = std::move(failure);
    Q_EMIT auditWriteFailureChanged();
}

} // namespace Vesk
