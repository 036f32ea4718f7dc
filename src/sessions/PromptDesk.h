// The one prompt that a session's child waits for a person with.
#pragma once

#include "claude/PromptRequests.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

#include <functional>
#include <optional>
#include <string_view>

namespace Vesk
{

/**
 * Holds at most one pending prompt, and answers every other request at once: a child is never left blocked on
 * something that nobody will see. Writes go out through the callback given at the start; a late answer to a
 * prompt that has gone does nothing.
 */
class PromptDesk
{
public:
    using Write = std::function<void(const QByteArray &line)>;

    explicit PromptDesk(Write write);

    [[nodiscard]] const std::optional<PermissionRequest> &pendingPermission() const { return m_permission; }
    [[nodiscard]] const std::optional<QuestionRequest> &pendingQuestion() const { return m_question; }
    [[nodiscard]] bool isEmpty() const { return !m_permission && !m_question; }
    /** When the pending prompt came; invalid without one. */
    [[nodiscard]] const QDateTime &since() const { return m_since; }

    /** What a request line led to. */
    struct Arrival {
        enum class Kind { Nothing, Permission, Question };
        Kind kind = Kind::Nothing;       ///< the prompt that is pending now because of this line
        bool questionSkipped = false;    ///< a question was denied because nobody attends the run
        std::optional<QString> replaced; ///< the name of the prompt that had to go for this one
    };

    /** A `control_request` line. */
    Arrival handleControlRequest(std::string_view line, bool interactive, bool remote, const QDateTime &now);

    /** The child takes a request back. The name of the prompt, if it was the pending one. */
    std::optional<QString> withdraw(const QString &requestId);

    /** Answers the pending prompt. What the session does from here on, in words; absent when none was
     * pending. */
    std::optional<QString> respondToPermission(PermissionChoice choice);
    std::optional<QString> respondToQuestion(const QList<QuestionAnswer> &answers);

    /** Forgets the prompt without an answer, for a child that is ending. True when there was one. */
    bool clear();

private:
    Arrival permissionArrived(std::string_view line, bool interactive, bool remote, const QDateTime &now);
    Arrival questionArrived(std::string_view line, bool interactive, bool remote, const QDateTime &now);
    template <typename Outcome, typename Own, typename Other>
    Arrival arrived(const Outcome &outcome, Own &own, Other &other, const QString &denial, Arrival::Kind kind,
                    const QDateTime &now);
    [[nodiscard]] std::optional<QString> nameUnlessId(const QString &requestId) const;
    void settle(const QString &requestId, const QDateTime &now);

    Write m_write;
    std::optional<PermissionRequest> m_permission;
    std::optional<QuestionRequest> m_question;
    QString m_requestId; // of the pending prompt
    QDateTime m_since;
};

} // namespace Vesk
