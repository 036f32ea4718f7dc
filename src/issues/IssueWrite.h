// How the tracker writes into an issue folder.
#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace Vesk::IssueWrite
{

/** What a change needs of the world around it. */
struct IO {
    /** Has open editors of a path write what they hold. May be empty. */
    std::function<void(const QString &path)> flush;
    /** Replaces a file's text; the reason for the person when that failed. */
    std::function<std::optional<QString>(const QString &path, const QString &text)> write;
    /** Makes a file of this text, never in the place of one that is there; else the reason, for the person.
     */
    std::function<std::optional<QString>(const QString &path, const QString &text)> create;
};

/** What is said of a new file whose name is not free. */
[[nodiscard]] QString nameTakenText();

/** The disk: links stay links, and a file that cannot be written stays as it was. */
[[nodiscard]] IO live(std::function<void(const QString &path)> flush);

} // namespace Vesk::IssueWrite
