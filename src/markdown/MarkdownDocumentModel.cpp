#include "markdown/MarkdownDocumentModel.h"

#include "markdown/DocumentFlight_p.h"

#include <QPromise>

#include <algorithm>
#include <utility>

namespace Vesk
{

std::chrono::milliseconds autosaveDelay(std::chrono::milliseconds waited, const AutosaveDelays &delays)
{
    return std::clamp(delays.maxLatency - waited, std::chrono::milliseconds::zero(), delays.debounce);
}

MarkdownDocumentModel::MarkdownDocumentModel(QString path, QObject *parent, AutosaveDelays delays)
    : QObject(parent)
    , m_path(std::move(path))
    , m_delays(delays)
{
    m_pool.setMaxThreadCount(1);
    for (QTimer *timer : {&m_autosave, &m_look}) {
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
    }
    connect(&m_autosave, &QTimer::timeout, this, &MarkdownDocumentModel::autosave);
    connect(&m_look, &QTimer::timeout, this, &MarkdownDocumentModel::lookAtChange);
}

MarkdownDocumentModel::~MarkdownDocumentModel() = default;

void MarkdownDocumentModel::setText(const QString &text)
{
    publish(text, m_savedText, m_conflict);
}

void MarkdownDocumentModel::setExternalActor(const QString &name)
{
    if (m_externalActor == name)
        return;
    m_externalActor = name;
    Q_EMIT stateChanged();
}

bool MarkdownDocumentModel::canSave() const
{
    return MarkdownConflictTexts::canSave(m_conflict, m_dirty);
}

bool MarkdownDocumentModel::canReload() const
{
    return m_conflict ? MarkdownConflictTexts::canReload(m_conflict) : saveFailed();
}

QString MarkdownDocumentModel::conflictLabel() const
{
    return saveFailed() ? MarkdownConflictTexts::saveFailedLabel() : MarkdownConflictTexts::label(m_conflict);
}

QString MarkdownDocumentModel::conflictBadge() const
{
    return saveFailed() ? MarkdownConflictTexts::saveFailedBadge(m_saveProblem)
                        : MarkdownConflictTexts::badge(m_conflict, m_externalActor);
}

QString MarkdownDocumentModel::saveHelp() const
{
    return MarkdownConflictTexts::saveHelp(m_conflict, m_dirty);
}

QString MarkdownDocumentModel::reloadHelp() const
{
    return MarkdownConflictTexts::reloadHelp(m_conflict);
}

QString MarkdownDocumentModel::lockedNotice() const
{
    return MarkdownConflictTexts::lockedNotice(m_conflict, m_everReadFromDisk, m_dirty);
}

// All three at once: whoever hears of one change finds the others done.
void MarkdownDocumentModel::publish(QString text, QString savedText, MaybeConflict conflict)
{
    const bool newText = text != m_text;
    const bool newSavedText = savedText != m_savedText;
    const bool newConflict = conflict != m_conflict;
    if (!newText && !newSavedText && !newConflict)
        return;
    m_text = std::move(text);
    m_savedText = std::move(savedText);
    m_conflict = conflict;
    const bool wasDirty = std::exchange(m_dirty, m_text != m_savedText);
    if (newText)
        Q_EMIT textChanged();
    if (newSavedText)
        Q_EMIT savedTextChanged();
    if (newConflict || wasDirty != m_dirty)
        Q_EMIT stateChanged();
}

void MarkdownDocumentModel::logInfo(const QString &line) const
{
    if (onLogInfo)
        onLogInfo(line);
}

void MarkdownDocumentModel::logError(const QString &line) const
{
    if (onLogError)
        onLogError(line);
}

void MarkdownDocumentModel::cancelAutosave()
{
    m_autosave.stop();
    m_saveWaiting = false;
}

void MarkdownDocumentModel::scheduleAutosave()
{
    cancelAutosave();
    const bool saving = m_flight && m_flight->job.kind == DiskJob::Kind::Autosave;
    if (saving ? m_text == m_flight->job.text : !m_dirty) {
        m_firstDirtyAt.reset();
        return;
    }
    const auto now = Clock::now();
    if (!m_firstDirtyAt)
        m_firstDirtyAt = now;
    const auto waited = std::chrono::duration_cast<std::chrono::milliseconds>(now - *m_firstDirtyAt);
    if (const auto delay = autosaveDelay(waited, m_delays); delay.count() > 0)
        m_autosave.start(delay);
    else
        autosave();
}

void MarkdownDocumentModel::autosave()
{
    cancelAutosave();
    if (m_flight)
        m_saveWaiting = true;
    else if (m_dirty)
        fly(saveJob(false));
}

// Sends a job to the thread. What is typed from here on is a new run of edits.
void MarkdownDocumentModel::fly(DiskJob job)
{
    if (job.kind == DiskJob::Kind::Autosave)
        m_firstDirtyAt.reset();
    auto *landing = new QFutureWatcher<DiskReport>(this);
    connect(landing, &QFutureWatcherBase::finished, this, &MarkdownDocumentModel::land);
    m_flight = std::make_unique<Flight>(Flight {job, landing});
    auto promise = std::make_shared<QPromise<DiskReport>>();
    landing->setFuture(promise->future());
    m_pool.start([promise, job = std::move(job)] {
        promise->start();
        promise->addResult(perform(job));
        promise->finish();
    });
}

void MarkdownDocumentModel::land()
{
    conclude();
    if (std::exchange(m_lookWaiting, false))
        lookAtChange();
    if (std::exchange(m_saveWaiting, false))
        autosave();
}

// Waits until no job is under way.
void MarkdownDocumentModel::settle()
{
    while (m_flight)
        conclude();
}

void MarkdownDocumentModel::conclude()
{
    m_flight->landing->waitForFinished();
    const auto flight = std::move(m_flight);
    flight->landing->disconnect(this);
    flight->landing->deleteLater();
    const DiskReport report = flight->landing->result();
    if (flight->job.kind == DiskJob::Kind::Look)
        applyLook(report.seen);
    else
        applySave(flight->job, report);
}

} // namespace Vesk
