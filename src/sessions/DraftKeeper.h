// Unsent messages, kept over a restart.
#pragma once

#include "base/Result.h"
#include "sessions/ComposerDraft.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QThreadPool>
#include <QTimer>

namespace Vesk
{

class AgentSessionStore;
class ProjectChat;

/** A draft and whose it is. */
struct SavedDraft {
    static constexpr qsizetype maxTextLength = 400'000; ///< UTF-16 units; the rest is not kept
    static constexpr qsizetype maxAttachments = 50;

    QString conversation; ///< the agent's id of it; empty before the first message
    QString folder;       ///< the project's
    ComposerDraft draft;
    QDateTime at; ///< when it was last written down
    bool operator==(const SavedDraft &) const = default;
};

inline constexpr qsizetype maxSavedDrafts = 50; ///< the oldest go first

/** A file of drafts: JSON with sorted keys. */
[[nodiscard]] QByteArray encodeDrafts(QList<SavedDraft> drafts);
/** Entries that make no sense are left out. Malformed when the bytes are no file of drafts at all. */
[[nodiscard]] Result<QList<SavedDraft>> decodeDrafts(const QByteArray &bytes);

/**
 * Writes the drafts of the open sessions to a small file, and gives each back when its conversation is opened
 * again: by the agent's id of that, and before the first message to the next new session of the same folder.
 * A session that was closed before its first message takes its draft along. Messages that waited for the end
 * of a turn when the program ended belong to the draft: they come back unsent.
 */
class DraftKeeper : public QObject
{
    Q_OBJECT

public:
    DraftKeeper(AgentSessionStore &store, QString path, QObject *parent = nullptr);
    ~DraftKeeper() override; ///< waits until the last file is written

    /** Writes what is not written yet. */
    void save();

private:
    void load();
    void add(ProjectChat *chat);
    void remove(ProjectChat *chat);
    void restore(ProjectChat *chat);
    void noteChange();
    [[nodiscard]] static SavedDraft draftOf(const ProjectChat &chat);

    AgentSessionStore &m_store;
    QString m_path;
    bool m_loaded = false;
    bool m_readable = true;      // what cannot be read is not overwritten
    QList<SavedDraft> m_waiting; // for their sessions to be opened
    QList<SavedDraft> m_open;    // as last noted, to keep their times
    QByteArray m_written;
    bool m_writeFailed = false; // the disk may be full: the next occasion is taken
    QTimer m_settled;
    QThreadPool m_writer; // one thread: files are written in order
};

} // namespace Vesk
