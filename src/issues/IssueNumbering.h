// Which numbers a folder's issues have, and which one comes next.
#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace Vesk::IssueNumbering
{

/** An id taken apart: "FE-012" and "FE-012-login" are "FE", 12, 3 digits. */
struct Token {
    QString prefix;
    qint64 number = 0;
    int width = 0; ///< digits as written
    bool operator==(const Token &) const = default;
};

/** Where a number was found. */
enum class Source { Files, Board, References };

struct MaxSource {
    Source source = Source::Files;
    qint64 number = 0;
    bool operator==(const MaxSource &) const = default;
};

/** What a folder tells of its own numbering. */
struct Survey {
    QString prefix;         ///< empty when no number was found
    int digits = 3;         ///< to which new numbers are filled up with zeros
    QSet<qint64> used;      ///< by files and rows of the board
    QSet<qint64> mentioned; ///< that occur in texts alone
    std::optional<qint64> fileMax;
    std::optional<qint64> boardMax;
    std::optional<qint64> referenceMax;
    qint64 next = 1; ///< the proposed number

    [[nodiscard]] bool isAvailable(qint64 number) const;
    [[nodiscard]] bool isMentionedOnly(qint64 number) const;
    /** The largest number of all, and where it stands. */
    [[nodiscard]] std::optional<MaxSource> maxSource() const;
};

/** Absent for a text that begins with no number. */
[[nodiscard]] std::optional<Token> parse(const QString &text);

/** The numbers that a text mentions outside of its code fences, in order. */
[[nodiscard]] QList<Token> idTokens(const QString &text);

[[nodiscard]] Survey survey(const QStringList &fileIDs, const QStringList &boardIDs,
                            const QStringList &referenceTexts);

/** "FE-012" of "FE", 12 and 3 digits; without a prefix the number alone. */
[[nodiscard]] QString format(const QString &prefix, qint64 number, int digits);

} // namespace Vesk::IssueNumbering
