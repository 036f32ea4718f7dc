#include "core/AuditLogger.h"

#include "base/Text.h"

#include <algorithm>
#include <utility>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

AuditLogEntry makeEntry(AuditKind kind, QString summary, const QDateTime &at)
{
    return {QUuid::createUuid(), at, kind, std::move(summary)};
}

QByteArray fileLine(const AuditLogEntry &entry)
{
    return (entry.at.toString(Qt::ISODateWithMs) + u'\t' + storedValue(entry.kind) + u'\t' + entry.summary
            + u'\n')
        .toUtf8();
}

} // namespace

QString AuditWriteFailure::detail() const
{
    return reason
        + u" — 누적 %1건. 원격 차단·주입 기록이 지금 유실 중입니다. 디스크 여유·경로 존재·권한을 확인하세요."_s
              .arg(count);
}

std::optional<AuditWriteFailure> AuditWriteFailure::observed(const std::optional<QString> &lastFailure,
                                                             qint64 count)
{
    if (!lastFailure || Text::trimWhitespace(*lastFailure).isEmpty())
        return std::nullopt;
    return AuditWriteFailure {*lastFailure, std::max<qint64>(count, 1)};
}

AuditLogger::AuditLogger(const QString &path, qsizetype bufferLimit, AuditFileOperations operations)
    : m_bufferLimit(bufferLimit)
    , m_file(path, operations)
{
}

void AuditLogger::log(const AuditEvent &event)
{
    const AuditLogEntry entry = makeEntry(event.kind(), event.summary(), QDateTime::currentDateTimeUtc());
    {
        const std::lock_guard guard(m_lock);
        appendLocked(entry);
    }
    const std::optional<Recovery> recovery = recordWriteResult(m_file.append(fileLine(entry)), 0);
    if (recovery)
        (void)recordWriteResult(m_file.append(recovery->line), recovery->lost);
}

void AuditLogger::appendLocked(AuditLogEntry entry)
{
    m_buffer.append(std::move(entry));
    if (m_buffer.size() > m_bufferLimit)
        m_buffer.remove(0, m_buffer.size() - m_bufferLimit);
}

std::optional<AuditLogger::Recovery> AuditLogger::recordWriteResult(const std::optional<QString> &reason,
                                                                    qint64 restoringLost)
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const std::lock_guard guard(m_lock);
    if (reason) {
        ++m_failureCount;
        m_lastFailure = reason;
        m_lastFailureAt = now;
        m_lostInRun += restoringLost + 1;
        if (!std::exchange(m_failing, true)) {
            appendLocked(makeEntry(AuditKind::SystemError,
                                   u"audit.log 쓰기 실패(직전 줄부터 파일에 안 남는다): "_s + *reason, now));
        }
        return std::nullopt;
    }
    if (!std::exchange(m_failing, false))
        return std::nullopt;
    m_lastFailure.reset();
    m_lastFailureAt = {};
    const qint64 lost = std::exchange(m_lostInRun, 0);
    const AuditLogEntry entry = makeEntry(
        AuditKind::Info, u"audit.log 쓰기 복구 — 직전 구간 %1건이 파일에 안 남았다"_s.arg(lost), now);
    appendLocked(entry);
    return Recovery {fileLine(entry), lost};
}

QList<AuditLogEntry> AuditLogger::recent(qsizetype limit) const
{
    QList<AuditLogEntry> rows;
    if (limit < 1)
        return rows;
    const std::lock_guard guard(m_lock);
    if (m_lastFailure) {
        rows.append(
            makeEntry(AuditKind::SystemError,
                      u"audit.log에 지금 못 쓰고 있다 — 누적 %1건 실패, 마지막 사유: "_s.arg(m_failureCount)
                          + *m_lastFailure,
                      m_lastFailureAt));
    }
    for (auto entry = m_buffer.crbegin(); entry != m_buffer.crend() && rows.size() < limit; ++entry)
        rows.append(*entry);
    return rows;
}

std::optional<QString> AuditLogger::lastFailure() const
{
    const std::lock_guard guard(m_lock);
    return m_lastFailure;
}

qint64 AuditLogger::failureCount() const
{
    const std::lock_guard guard(m_lock);
    return m_failureCount;
}

} // namespace Vesk
