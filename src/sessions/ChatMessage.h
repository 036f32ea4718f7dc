// The rows of a transcript.
#pragma once

#include "claude/StreamLine.h"

#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace Vesk
{

/** One tool call of the agent. */
struct ToolActivity {
    enum class Outcome { Running, Ok, Failed };

    static constexpr qsizetype maxOutputBytes = 4000;

    QString id; ///< the tool use id
    QString name;
    QString summary; ///< one line
    std::optional<QString> output;
    Outcome outcome = Outcome::Running;
    QDateTime startedAt;
    QDateTime finishedAt; ///< invalid while it runs

    /** A `tool_use` block's call, which runs from `at` on. */
    [[nodiscard]] static ToolActivity begun(const StreamContent &block, const QDateTime &at);
    /** The one line that tells what a call does: the tool's name and its most telling argument. */
    [[nodiscard]] static QString summaryLine(const QString &name, const QJsonObject &input);

    /** Takes over the result: trimmed, and clipped to maxOutputBytes with the number of bytes left out.
        `droppedBytes` are those that had followed and did not come. */
    void finish(const QString &rawOutput, bool isError, const QDateTime &at, qsizetype droppedBytes = 0);
};

/** One row. */
struct ChatMessage {
    enum class Role { User, Assistant, Activity, Tools };

    QUuid id;
    Role role = Role::User;
    QString text;
    bool streaming = false; ///< it may still grow
    bool isError = false;
    QStringList attachments;   ///< paths, on user rows
    QList<ToolActivity> tools; ///< on tools rows, whose text is empty
    QDateTime at;              ///< when the row was made

    /** An id that no other row of this process has. Main thread or not. */
    [[nodiscard]] static QUuid freshId();
};

} // namespace Vesk
