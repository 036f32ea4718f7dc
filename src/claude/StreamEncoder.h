// The lines that Vesk writes on a child's standard input. Every function gives one line without its newline,
// and always a valid one: the child dies of a line that is no JSON.
#pragma once

#include "claude/PromptRequests.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace Vesk
{

/** What a control request is answered with. */
struct PermissionDecision {
    bool isAllowed = false;
    QByteArray updatedInput;                      ///< of an allow: the text of a JSON object
    std::optional<QByteArray> updatedPermissions; ///< of an allow: the text of a JSON array
    QString message;                              ///< of a denial

    [[nodiscard]] static PermissionDecision
    allow(QByteArray updatedInput, std::optional<QByteArray> updatedPermissions = std::nullopt);
    [[nodiscard]] static PermissionDecision deny(QString message);
};

[[nodiscard]] QByteArray encodeUserMessage(const QString &text);

/** A request to abandon the turn and stay, with a fresh id. */
[[nodiscard]] QByteArray encodeInterruptRequest();

/** The answer to a control request. The texts of an allow go out byte for byte (numbers keep every digit); an
    input that is no JSON object is sent as `{}`, permissions that are no JSON array are left out. */
[[nodiscard]] QByteArray encodeControlResponse(const QString &requestId, const PermissionDecision &decision);

/** The input of the question tool with the answers set beside it, all else byte for byte as it came. Answers
    belong to the questions by position. */
[[nodiscard]] QByteArray encodeQuestionUpdatedInput(const QuestionRequest &request,
                                                    const QList<QuestionAnswer> &answers);

} // namespace Vesk
