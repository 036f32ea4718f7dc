// What a change that is made from the tracker works with.
#pragma once

#include "core/AuditEvent.h"
#include "issues/IssueStore.h"
#include "issues/IssueWrite.h"

#include <QString>

#include <functional>

namespace Vesk
{

struct IssueDesk {
    IssueStore &store;
    IssueWrite::IO io;
    QString alias; ///< the project's
    std::function<void(const AuditEvent &event)> log;

    /** Has an open editor of this file write what it holds. */
    void flush(const QString &path) const
    {
        if (io.flush && !path.isEmpty()) {
            io.flush(path);
        }
    }
    void logInfo(const QString &text) const
    {
        if (log) {
            log(AuditEvent::info(text));
        }
    }
    void logError(const QString &text) const
    {
        if (log) {
            log(AuditEvent::systemError(text));
        }
    }
};

} // namespace Vesk
