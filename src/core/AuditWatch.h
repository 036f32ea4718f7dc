// What the window shows of the audit log.
#pragma once

#include "core/AuditLogger.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <optional>

namespace Vesk
{

/** Publishes the newest entries and the warning about a log that cannot be written. Main thread only. */
class AuditWatch : public QObject
{
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds defaultInterval = std::chrono::seconds(30);
    static constexpr qsizetype recentLimit = 50;

    explicit AuditWatch(AuditLogger &logger, QObject *parent = nullptr);

    /** Looks at the log's state every `interval` from now on, so that a failure shows without a new event. */
    void startAuditWatch(std::chrono::milliseconds interval = defaultInterval);
    void stopAuditWatch();

    /** To be called behind a batch of log() calls whose result the window should show. */
    void noteBatch();

    void refreshAuditWriteFailure();
    /** Hides the warning until the log fails anew. */
    void dismissAuditWriteFailureBanner();

    /** Newest first. */
    [[nodiscard]] const QList<AuditLogEntry> &recentLogs() const { return m_recentLogs; }
    [[nodiscard]] const std::optional<AuditWriteFailure> &auditWriteFailure() const
    {
        return m_auditWriteFailure;
    }
    [[nodiscard]] std::optional<qint64> auditWriteFailureDismissedAtCount() const
    {
        return m_auditWriteFailureDismissedAtCount;
    }

Q_SIGNALS:
    void recentLogsChanged();
    void auditWriteFailureChanged();

private:
    void publish(std::optional<AuditWriteFailure> failure);

    AuditLogger &m_logger;
    QTimer m_timer;
    QList<AuditLogEntry> m_recentLogs;
    std::optional<AuditWriteFailure> m_auditWriteFailure;
    std::optional<qint64> m_auditWriteFailureDismissedAtCount;
};

} // namespace Vesk
