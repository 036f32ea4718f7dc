#include "core/AuditEvent.h"

namespace Vesk
{

using namespace Qt::StringLiterals;

QString storedValue(AuditKind kind)
{
    switch (kind) {
    case AuditKind::MessageReceived:
        return u"messageReceived"_s;
    case AuditKind::MessageBlocked:
        return u"messageBlocked"_s;
    case AuditKind::MessageInjected:
        return u"messageInjected"_s;
    case AuditKind::SessionRegistered:
        return u"sessionRegistered"_s;
    case AuditKind::SessionLaunched:
        return u"sessionLaunched"_s;
    case AuditKind::SessionLaunchFailed:
        return u"sessionLaunchFailed"_s;
    case AuditKind::SystemError:
        return u"systemError"_s;
    case AuditKind::Info:
        return u"info"_s;
    }
    return {};
}

AuditEvent AuditEvent::messageReceived(QString thread, QString user, qsizetype length)
{
    return AuditEvent(MessageReceived {std::move(thread), std::move(user), length});
}

AuditEvent AuditEvent::messageBlocked(QString thread, QString reason)
{
    return AuditEvent(MessageBlocked {std::move(thread), std::move(reason)});
}

AuditEvent AuditEvent::messageInjected(QString thread, QString terminal, bool enter)
{
    return AuditEvent(MessageInjected {std::move(thread), std::move(terminal), enter});
}

AuditEvent AuditEvent::sessionRegistered(QString thread, QString terminal)
{
    return AuditEvent(SessionRegistered {std::move(thread), std::move(terminal)});
}

AuditEvent AuditEvent::sessionLaunched(QString alias, QString bootstrapId)
{
    return AuditEvent(SessionLaunched {std::move(alias), std::move(bootstrapId)});
}

AuditEvent AuditEvent::sessionLaunchFailed(QString alias, QString error)
{
    return AuditEvent(SessionLaunchFailed {std::move(alias), std::move(error)});
}

AuditEvent AuditEvent::systemError(QString text)
{
    return AuditEvent(SystemError {std::move(text)});
}

AuditEvent AuditEvent::info(QString text)
{
    return AuditEvent(Info {std::move(text)});
}

// Pieces are joined, not filled into a pattern: a user's text may itself hold "%1".
struct AuditEvent::Summary {
    QString operator()(const MessageReceived &e) const
    {
        return "recv "_L1 + e.thread + " from "_L1 + e.user + " ("_L1 + QString::number(e.length)
            + " chars)"_L1;
    }
    QString operator()(const MessageBlocked &e) const { return "BLOCK "_L1 + e.thread + ": "_L1 + e.reason; }
    QString operator()(const MessageInjected &e) const
    {
        return "inject "_L1 + e.thread + u" → "_s + e.terminal
            + (e.enter ? " enter=true"_L1 : " enter=false"_L1);
    }
    QString operator()(const SessionRegistered &e) const
    {
        return "register "_L1 + e.thread + u" → "_s + e.terminal;
    }
    QString operator()(const SessionLaunched &e) const
    {
        return "launch "_L1 + e.alias + " bootstrap="_L1 + e.bootstrapId;
    }
    QString operator()(const SessionLaunchFailed &e) const
    {
        return "launch FAIL "_L1 + e.alias + ": "_L1 + e.error;
    }
    QString operator()(const SystemError &e) const { return "SYS ERR "_L1 + e.text; }
    QString operator()(const Info &e) const { return e.text; }
};

QString AuditEvent::summary() const
{
    return std::visit(Summary {}, m_payload);
}

} // namespace Vesk
