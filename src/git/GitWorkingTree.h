// What `git status` says of the files of a work tree.
#pragma once

#include <QByteArrayView>
#include <QList>
#include <QString>

#include <optional>

namespace Vesk::GitWorkingTree
{

/** One changed file, or one folder that git does not follow: that one ends in "/". */
struct Change {
    enum class Kind { Modified, Added, Deleted, Renamed, Copied, TypeChanged, Untracked, Conflicted, Other };

    QString path {};                        ///< from the root; text by GitPath::decode()
    std::optional<QString> originalPath {}; ///< of a rename or copy
    QChar index = u' ';                     ///< status letter of the staged side
    QChar worktree = u' ';                  ///< status letter of the file on disk

    [[nodiscard]] Kind kind() const;
    /** The one letter for a list. */
    [[nodiscard]] QString badge() const;
    /** In the person's words. */
    [[nodiscard]] QString kindLabel() const;
    /** What of it is staged; empty when neither side has changed. */
    [[nodiscard]] QString stageSummary() const;
    /** For people: the last component, of a folder without its "/". */
    [[nodiscard]] QString fileName() const;
    /** For people: what stands before the name, without a "/" at its end; empty at the root. */
    [[nodiscard]] QString directory() const;
    /** An untracked folder: it has no diff. */
    [[nodiscard]] bool isFolder() const { return path.endsWith(u'/'); }

    bool operator==(const Change &) const = default;
};

/** Parses `git status --porcelain=v1 -z`. A record that is none is left out. */
[[nodiscard]] QList<Change> parseStatus(QByteArrayView text);

} // namespace Vesk::GitWorkingTree
