// A session that works on an issue, as the tracker shows it beside the issue.
#pragma once

#include "ui/controls/SessionMarks.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

namespace Vesk
{

class ProjectChat;

struct IssueSession {
    SessionMarks::Kind mark = SessionMarks::Kind::Idle;
    QString text {};
    QDateTime runningSince {}; ///< invalid while nothing runs

    bool operator==(const IssueSession &) const = default;

    [[nodiscard]] static IssueSession of(const ProjectChat &chat);
    /** The one of several that matters most; of equal ones the last. */
    [[nodiscard]] static std::optional<IssueSession> foremost(const QList<ProjectChat *> &chats);
};

} // namespace Vesk
