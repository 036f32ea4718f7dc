// A project's past conversations, listed off the main thread and told as they are read.
#pragma once

#include "sessions/ClaudeSessionHistory.h"

#include <QFutureWatcher>
#include <QHash>
#include <QObject>

#include <memory>

namespace Vesk
{

/**
 * Lists one project at a time. Between start() and finished() come any number of found(); after cancel() or
 * another start() nothing comes of the earlier one.
 *
 * What was read of a file is kept for as long as this object lives: a file whose size and time of change are
 * the same is not opened again.
 */
class SessionScan : public QObject
{
    Q_OBJECT

public:
    explicit SessionScan(QObject *parent = nullptr);
    ~SessionScan() override;

    void start(const QString &root, const QString &alias, const QString &cwd);
    void cancel();
    [[nodiscard]] bool isRunning() const { return m_watcher != nullptr; }

Q_SIGNALS:
    /** Newest first in themselves; those of a later signal are mostly older. */
    void found(const QList<Vesk::ResumableSession> &sessions);
    /** `unreadable` holds the folders that could not be listed, a line with the reason for each. */
    void finished(const QStringList &unreadable);

private:
    /** What was read of one file. */
    struct ReadTitle {
        ListedFile file;
        std::optional<QString> title;
    };
    struct Batch {
        QList<ReadTitle> read;
        QStringList unreadable;
    };
    struct Work;
    using Watcher = QFutureWatcher<Batch>;

    void take(const Batch &batch, const QString &alias, const QString &cwd);
    static void list(const std::shared_ptr<Work> &work);
    static void readTitles(const std::shared_ptr<Work> &work);

    Watcher *m_watcher = nullptr;      // while a scan runs
    QHash<QString, ReadTitle> m_known; // by path
    QStringList m_unreadable;
};

} // namespace Vesk
