// What the audit log records: one event, its kind and its one-line summary.
#pragma once

#include <QString>

#include <utility>
#include <variant>

namespace Vesk
{

enum class AuditKind {
    MessageReceived,
    MessageBlocked,
    MessageInjected,
    SessionRegistered,
    SessionLaunched,
    SessionLaunchFailed,
    SystemError,
    Info,
};

/** The kind as the log file spells it, as in "messageReceived". */
[[nodiscard]] QString storedValue(AuditKind kind);

/** One thing worth recording. `thread` is the description of a messenger thread's key. */
class AuditEvent
{
public:
    static AuditEvent messageReceived(QString thread, QString user, qsizetype length);
    static AuditEvent messageBlocked(QString thread, QString reason);
    static AuditEvent messageInjected(QString thread, QString terminal, bool enter);
    static AuditEvent sessionRegistered(QString thread, QString terminal);
    static AuditEvent sessionLaunched(QString alias, QString bootstrapId);
    static AuditEvent sessionLaunchFailed(QString alias, QString error);
    static AuditEvent systemError(QString text);
    static AuditEvent info(QString text);

    [[nodiscard]] AuditKind kind() const { return static_cast<AuditKind>(m_payload.index()); }
    [[nodiscard]] QString summary() const;

private:
    struct MessageReceived {
        QString thread, user;
        qsizetype length = 0;
    };
    struct MessageBlocked {
        QString thread, reason;
    };
    struct MessageInjected {
        QString thread, terminal;
        bool enter = false;
    };
    struct SessionRegistered {
        QString thread, terminal;
    };
    struct SessionLaunched {
        QString alias, bootstrapId;
    };
    struct SessionLaunchFailed {
        QString alias, error;
    };
    struct SystemError {
        QString text;
    };
    struct Info {
        QString text;
    };
    struct Summary; // the visitor behind summary()

    // In the order of AuditKind: kind() is the index.
    using Payload = std::variant<MessageReceived, MessageBlocked, MessageInjected, SessionRegistered,
                                 SessionLaunched, SessionLaunchFailed, SystemError, Info>;

    explicit AuditEvent(Payload payload)
        : m_payload(std::move(payload))
    {
    }

    Payload m_payload;
};

} // namespace Vesk
