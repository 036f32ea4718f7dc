// The skeleton of a new issue: the folder's own, or one learned from its issues, or ours.
#pragma once

#include "issues/IssueDocument.h"

#include <QList>
#include <QString>

#include <optional>

namespace Vesk::IssueTemplate
{

enum class Origin {
    Readme,   ///< the template in the folder's rules
    Existing, ///< learned from the issues that are there
    Builtin,
};

struct Template {
    QString markdown;
    Origin origin = Origin::Builtin;
    bool operator==(const Template &) const = default;
};

/** `key` is the prefix for our own skeleton. */
[[nodiscard]] Template resolve(const std::optional<QString> &readme, const QList<IssueDocument> &existing,
                               const QString &key);

/** The first code fence of a text with a title line and a table of two columns. */
[[nodiscard]] std::optional<QString> templateFence(const QString &text);
/** A skeleton of the fields and sections that at least half of the issues have. */
[[nodiscard]] std::optional<QString> learn(const QList<IssueDocument> &documents);

/** What stands between id and title in the skeleton's title line, blanks included. */
[[nodiscard]] std::optional<QString> headingSeparator(const QString &markdown);
/** The skeleton with this title line. */
[[nodiscard]] QString replaceHeading(const QString &markdown, const QString &id, const QString &title);

/** "FE-012-login.md" */
[[nodiscard]] QString fileName(const QString &id, const QString &slug);

} // namespace Vesk::IssueTemplate
