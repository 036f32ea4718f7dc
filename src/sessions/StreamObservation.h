// What of a run's stream could not be read: counted, never kept.
#pragma once

#include <QHash>
#include <QString>

#include <optional>
#include <string_view>

namespace Vesk
{

/**
 * The counters of one run. A new version of the agent program can change its stream; without these a session
 * would just fall silent.
 */
struct StreamObservation {
    static constexpr int maxUnknownNames = 32;
    static constexpr qsizetype maxPreviewBytes = 200;

    int totalLines = 0;     ///< lines seen on standard output
    int decodeFailures = 0; ///< of them, those that could not be decoded
    QHash<QString, int> unknownCounts;
    int unknownOverflow = 0; ///< unknown lines whose name came after maxUnknownNames others
    int stderrLines = 0;     ///< lines on standard error that were not blank
    int resultErrors = 0;    ///< error texts of `result` lines

    /** Counts an unknown line. True when this is the first of a name that is kept. */
    bool noteUnknown(const QString &name);

    [[nodiscard]] int droppedLines() const;

    /** The sentence for the session once a quarter of at least twenty lines was dropped. */
    [[nodiscard]] std::optional<QString> warningLine() const;
    /** One line for the run's footer; absent when nothing was dropped and standard error was silent. */
    [[nodiscard]] std::optional<QString> summaryLine() const;
    /** The same with the names, a line each; empty when there is nothing to tell. */
    [[nodiscard]] QString detailText() const;

    /** `type/subtype`, each part as token() lets it pass, "?" in place of one that does not. */
    [[nodiscard]] static QString name(const QString &type, const std::optional<QString> &subtype);
    /** The text if it is a short plain word (at most 32 of A-Z a-z 0-9 _ - .), so that no prompt text gets
       into a log by way of a name. */
    [[nodiscard]] static std::optional<QString> token(const QString &text);
    /** The beginning of a line on one line, without control characters, at most maxPreviewBytes and "…". */
    [[nodiscard]] static QString rawPreview(const QString &text);
    [[nodiscard]] static QString rawPreview(std::string_view utf8);
};

} // namespace Vesk
