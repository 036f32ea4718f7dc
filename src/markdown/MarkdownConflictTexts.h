// What an editor says about the disagreement between its text and the disk.
#pragma once

#include <QString>

#include <optional>

namespace Vesk
{

/** A disagreement between the editor and the disk that a person has to settle. */
enum class DocumentConflict {
    ExternalChange, ///< others wrote the file while it was being edited here
    Unreadable,     ///< the file is there and cannot be read: nothing is written over it
    Missing,        ///< the file is gone while there are unsaved edits
};

using MaybeConflict = std::optional<DocumentConflict>;

namespace MarkdownConflictTexts
{

/** The badge's few words; empty without a conflict. */
[[nodiscard]] QString label(MaybeConflict conflict);
/** The badge's long text. `externalActor` names who else may write the file. */
[[nodiscard]] QString badge(MaybeConflict conflict, const QString &externalActor);

/** The badge of a save that failed for this reason; it goes before that of a conflict. */
[[nodiscard]] QString saveFailedLabel();
[[nodiscard]] QString saveFailedBadge(const QString &reason);

[[nodiscard]] bool canSave(MaybeConflict conflict, bool dirty);
[[nodiscard]] QString saveHelp(MaybeConflict conflict, bool dirty);
/** Reading again is offered where it can settle the conflict. */
[[nodiscard]] bool canReload(MaybeConflict conflict);
[[nodiscard]] QString reloadHelp(MaybeConflict conflict);

/** Stands over the locked editor of an unreadable file; empty otherwise. */
[[nodiscard]] QString lockedNotice(MaybeConflict conflict, bool everReadFromDisk, bool dirty);

} // namespace MarkdownConflictTexts

} // namespace Vesk
