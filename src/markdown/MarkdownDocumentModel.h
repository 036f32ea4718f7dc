// The editing model behind every Markdown file that a person edits.
#pragma once

#include "base/FileWatch.h"
#include "markdown/MarkdownConflictTexts.h"
#include "markdown/MarkdownEvacuation.h"

#include <QObject>
#include <QString>
#include <QThreadPool>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace Vesk
{

struct DiskJob;
struct DiskReport;
struct DiskSight;

/** How long typed text may wait for the disk. */
struct AutosaveDelays {
    std::chrono::milliseconds debounce {1000};   ///< after the last keystroke
    std::chrono::milliseconds maxLatency {3000}; ///< after the first one that is not saved
    std::chrono::milliseconds settle {20};       ///< from a file event to the look at the disk
};

/** What became of the text of an editor that goes. */
struct DocumentFarewell {
    bool kept = true;  ///< on disk: in its file, or in a copy
    QString copy = {}; ///< the file that took what could not be saved; empty when none had to
};

/** When to save next, given how long the oldest unsaved edit has waited; zero: now. */
[[nodiscard]] std::chrono::milliseconds autosaveDelay(std::chrono::milliseconds waited,
                                                      const AutosaveDelays &delays);

/**
 * Owns the text in an editor and keeps it honest against a disk that others write to. A file that could not
 * be read is never overwritten, an edit is never lost silently, and a link is never replaced by a plain file.
 *
 * A view calls load(), then startWatching(), when it appears; scheduleAutosave() on each change of the text;
 * flushOrEvacuate(), then stopWatching(), when it goes. Autosaves and looks after a file event happen on a
 * thread of their own, one at a time; whatever a person asks for is done on return. Main thread only.
 */
class MarkdownDocumentModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString path READ path CONSTANT)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QString savedText READ savedText NOTIFY savedTextChanged)
    Q_PROPERTY(bool dirty READ isDirty NOTIFY stateChanged)
    Q_PROPERTY(bool hasConflict READ hasConflict NOTIFY stateChanged)
    Q_PROPERTY(bool saveFailed READ saveFailed NOTIFY stateChanged)
    Q_PROPERTY(bool locked READ isLocked NOTIFY stateChanged)
    Q_PROPERTY(bool canSave READ canSave NOTIFY stateChanged)
    Q_PROPERTY(bool canReload READ canReload NOTIFY stateChanged)
    Q_PROPERTY(QString conflictLabel READ conflictLabel NOTIFY stateChanged)
    Q_PROPERTY(QString conflictBadge READ conflictBadge NOTIFY stateChanged)
    Q_PROPERTY(QString saveHelp READ saveHelp NOTIFY stateChanged)
    Q_PROPERTY(QString reloadHelp READ reloadHelp NOTIFY stateChanged)
    Q_PROPERTY(QString lockedNotice READ lockedNotice NOTIFY stateChanged)
    Q_PROPERTY(QString externalActor READ externalActor WRITE setExternalActor NOTIFY stateChanged)

public:
    using Clock = std::chrono::steady_clock;
    using LogSink = std::function<void(const QString &)>;

    /** Reads nothing yet. */
    explicit MarkdownDocumentModel(QString path, QObject *parent = nullptr, AutosaveDelays delays = {});
    ~MarkdownDocumentModel() override; ///< waits for a write that is under way; saves nothing

    LogSink onLogInfo;
    LogSink onLogError;

    [[nodiscard]] const QString &path() const { return m_path; }
    [[nodiscard]] const QString &text() const { return m_text; }
    void setText(const QString &text);
    [[nodiscard]] const QString &savedText() const { return m_savedText; } ///< what is known to be on disk
    [[nodiscard]] bool isDirty() const { return m_dirty; } ///< the text differs from what is saved
    [[nodiscard]] MaybeConflict conflict() const { return m_conflict; }
    [[nodiscard]] bool hasConflict() const { return m_conflict.has_value(); }
    [[nodiscard]] bool everReadFromDisk() const { return m_everReadFromDisk; }

    /** There is unsaved text, and the last try to write it failed. */
    [[nodiscard]] bool saveFailed() const { return m_dirty && !m_saveProblem.isEmpty(); }

    /** Text may be selected but not changed. */
    [[nodiscard]] bool isLocked() const { return m_conflict == DocumentConflict::Unreadable; }
    [[nodiscard]] bool canSave() const;
    [[nodiscard]] bool canReload() const;
    [[nodiscard]] QString conflictLabel() const;
    [[nodiscard]] QString conflictBadge() const;
    [[nodiscard]] QString saveHelp() const;
    [[nodiscard]] QString reloadHelp() const;
    [[nodiscard]] QString lockedNotice() const;
    /** Who else may write the file, for the badge. */
    [[nodiscard]] const QString &externalActor() const { return m_externalActor; }
    void setExternalActor(const QString &name);
    /** The folder for a copy of unsaved text when none can be made beside the file; empty for none. */
    void setLastResort(const QString &folder) { m_lastResort = folder; }

    /** Takes what the disk holds; edits are given up. */
    Q_INVOKABLE void load();
    /** Writes the text. With `force` a person wants it over what others wrote and where the file is gone. */
    Q_INVOKABLE void save(bool force);
    Q_INVOKABLE void scheduleAutosave();
    Q_INVOKABLE void startWatching();
    Q_INVOKABLE void stopWatching();
    /** Saves; what cannot be saved goes to a file beside it, or into the last resort. */
    DocumentFarewell flushOrEvacuate();

    [[nodiscard]] std::optional<Clock::time_point> firstDirtyAt() const { return m_firstDirtyAt; }
    [[nodiscard]] bool isWatchingFile() const { return m_watcher != nullptr; }
    /** The folder watched in place of a file that is gone; empty when none is. */
    [[nodiscard]] QString dirWatchPath() const { return m_dirWatch ? m_dirWatch->path : QString(); }
    [[nodiscard]] int parentWatchArmCount() const { return m_parentWatchArmCount; }

Q_SIGNALS:
    void textChanged();
    void savedTextChanged();
    void stateChanged();

private:
    struct Flight;
    struct DirWatch {
        std::unique_ptr<FileWatch> watcher;
        QString path;
        std::optional<quint64> inode;
        std::optional<QString> anchor; // closest existing ancestor when armed
    };

    void publish(QString text, QString savedText, MaybeConflict conflict);
    void setConflict(MaybeConflict conflict) { publish(m_text, m_savedText, conflict); }
    void logInfo(const QString &line) const;
    void logError(const QString &line) const;
    void logOnce(bool &latch, const LogSink &sink, const QString &line) const;

    void noteSight(const DiskSight &seen, const QString &context);
    void recoverInterruptedWrite();
    [[nodiscard]] DiskJob saveJob(bool force) const;
    void applySave(const DiskJob &job, const DiskReport &report);
    void setSaveProblem(const QString &problem);
    void noteWriteAttempt(quint64 links);
    void noteWritten(const DiskJob &job, const QString &written);
    void cancelAutosave();
    void autosave();

    void fly(DiskJob job);
    void land();
    void settle();
    void conclude();

    void handleExternalChange();
    void lookAtChange();
    void applyLook(const DiskSight &seen);
    void armWatch();
    void dropWatches();
    void watchParentDirectory();
    void noteParentEvent();
    void rearmParentWatcherIfStale();

    [[nodiscard]] EvacuationReason skipReason() const;
    [[nodiscard]] DocumentFarewell evacuateUnsavedEdits(EvacuationReason reason);
    [[nodiscard]] std::optional<QString> copyInto(const QString &folder, const QString &why,
                                                  const QString &unsaved) const;

    const QString m_path;
    const AutosaveDelays m_delays;
    QString m_externalActor;
    QString m_lastResort;
    QString m_saveProblem; // of the last try
    QString m_text;
    QString m_savedText;
    MaybeConflict m_conflict;
    bool m_dirty = false;
    bool m_everReadFromDisk = false;

    // Each keeps a fault that lasts from being logged again and again.
    bool m_loggedUnreadable = false;
    bool m_loggedMissingFile = false;
    bool m_loggedBlockedWrite = false;
    bool m_loggedHardLinkSave = false;

    QTimer m_autosave;
    std::optional<Clock::time_point> m_firstDirtyAt;
    std::unique_ptr<Flight> m_flight; // the one job under way
    bool m_saveWaiting = false;       // for the flight to land
    bool m_lookWaiting = false;
    QThreadPool m_pool; // one thread, its own: other work never holds up a save

    bool m_watchRequested = false;
    std::unique_ptr<FileWatch> m_watcher;
    std::optional<DirWatch> m_dirWatch;
    int m_parentWatchArmCount = 0;
    QTimer m_look;
};

} // namespace Vesk
