// The status word of an issue: six known ones, and whatever else a project writes.
#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace Vesk
{

/** The order of the kinds is the order in which statuses are listed. */
struct IssueStatus {
    enum class Kind { Todo, Doing, Blocked, Review, Done, Cancelled, Other, Unset };

    Kind kind = Kind::Unset;
    QString other {}; ///< the project's own word, for Kind::Other alone

    /** Known words and their aliases in any case; an empty or absent text is Unset, any other word Other. */
    [[nodiscard]] static IssueStatus parse(const std::optional<QString> &text);

    /** What a picker offers: the six known ones, then each other word of `seen` once, in the order seen. */
    [[nodiscard]] static QList<IssueStatus> vocabulary(const QList<IssueStatus> &seen);

    /** One of the six. */
    [[nodiscard]] bool isKnown() const { return kind < Kind::Other; }
    /** Nothing is left to do: Done and Cancelled. */
    [[nodiscard]] bool isTerminal() const { return kind == Kind::Done || kind == Kind::Cancelled; }
    /** The word that goes into a file; empty for Unset. */
    [[nodiscard]] QString written() const;

    bool operator==(const IssueStatus &) const = default;
};

[[nodiscard]] inline size_t qHash(const IssueStatus &status, size_t seed = 0) noexcept
{
    return qHashMulti(seed, static_cast<int>(status.kind), status.other);
}

} // namespace Vesk
