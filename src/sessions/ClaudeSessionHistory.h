// The conversations of the past, read from the transcripts that the agent program keeps. Everything here
// reads the disk and belongs on a pool thread; nothing here writes a transcript.
#pragma once

#include "base/FolderListing.h"
#include "sessions/ChatMessage.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

namespace Vesk
{

/** A conversation that can be taken up again. */
struct ResumableSession {
    QString id;    ///< the agent's conversation id: the stem of the file's name
    QString cwd;   ///< the project's folder
    QString alias; ///< the project
    QString title;
    QDateTime lastModified;
    QString path; ///< the transcript
    qint64 size = 0;

    bool operator==(const ResumableSession &) const = default;
};

namespace ClaudeSessionHistory
{

/** How many rows of conversation a resumed session begins with. */
inline constexpr int resumedRows = 80;

/** What a conversation without a title is called. */
[[nodiscard]] QString untitled();

struct Listing {
    QList<ListedFile> files; ///< newest first, each conversation once
    QStringList unreadable;  ///< folders that could not be listed, each with the reason
};

/** The transcripts of a project. No title has been read. */
[[nodiscard]] Listing transcripts(const QString &root, const QString &cwd);

/** The transcript of one conversation of a project: of several the one that was written last. */
[[nodiscard]] std::optional<ListedFile> transcript(const QString &root, const QString &cwd,
                                                   const QString &id);

/** The record of a listed transcript; an absent title becomes untitled(). */
[[nodiscard]] ResumableSession session(const ListedFile &file, const QString &alias, const QString &cwd,
                                       const std::optional<QString> &title);

/** The project's conversations, newest first. Reads every title: SessionScan does not wait for them. */
[[nodiscard]] QList<ResumableSession> sessions(const QString &root, const QString &alias, const QString &cwd);

/** The rows of a transcript, as trimmed() leaves them. Empty for a file that cannot be read or is beyond
    8 MiB. */
[[nodiscard]] QList<ChatMessage> loadMessages(const QString &path, int cap, bool includeTools);

/** The last `cap` rows of conversation and every tool row among and behind them. */
[[nodiscard]] QList<ChatMessage> trimmed(QList<ChatMessage> rows, int cap);

/** Whether this is a transcript that may be thrown away: a plain file, no link, truly inside `root`. */
[[nodiscard]] bool isDeletableSessionFile(const QString &path, const QString &root);

/** A transcript that was thrown away. */
struct TrashedFile {
    QString original;
    QString inTrash; ///< empty where the Trash does not tell
};

/** Moves a transcript to the user's Trash; absent when that did not work. */
[[nodiscard]] std::optional<TrashedFile> moveToTrash(const QString &path, const QString &root);

enum class TrashReturn {
    Returned,
    Occupied, ///< a file of that name is there again; nothing was touched
    Gone,     ///< it is no longer in the Trash
    Failed,
};

/** Brings it back to where it lay. */
[[nodiscard]] TrashReturn takeFromTrash(const TrashedFile &trashed);

} // namespace ClaudeSessionHistory

} // namespace Vesk
