// Loading and saving: what a sight of the disk and the outcome of a write mean for the document.
#include "base/Files.h"
#include "base/Text.h"
#include "markdown/DocumentFlight_p.h"
#include "markdown/DocumentFolders.h"
#include "markdown/InPlaceWrite.h"
#include "markdown/MarkdownFileWriter.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace Vesk
{

void MarkdownDocumentModel::logOnce(bool &latch, const LogSink &sink, const QString &line) const
{
    if (!std::exchange(latch, true) && sink)
        sink(line);
}

void MarkdownDocumentModel::noteSight(const DiskSight &seen, const QString &context)
{
    if (!seen.exists || seen.text) {
        m_loggedUnreadable = false;
        m_loggedBlockedWrite = false;
    }
    if (seen.text && !std::exchange(m_everReadFromDisk, true))
        Q_EMIT stateChanged();
    if (seen.exists && !seen.text)
        logOnce(m_loggedUnreadable, onLogError,
                QStringLiteral("md read failed (%1): %2").arg(context, m_path)
                    + QStringLiteral(" — 비UTF8이거나 읽을 수 없는 파일. 내용을 채택하지도, 그 위에 "
                                     "저장하지도 않는다(원본 보호)."));
}

void MarkdownDocumentModel::load()
{
    settle();
    m_lookWaiting = false;
    m_loggedUnreadable = false;
    m_loggedMissingFile = false;
    m_loggedBlockedWrite = false;
    setSaveProblem({});
    recoverInterruptedWrite();
    const DiskSight seen = lookAtDisk(m_path);
    noteSight(seen, QStringLiteral("load"));
    if (seen.text) {
        cancelAutosave();
        m_firstDirtyAt.reset();
        publish(*seen.text, *seen.text, std::nullopt);
    } else if (seen.exists) {
        setConflict(DocumentConflict::Unreadable);
    } else if (m_dirty) {
        setConflict(DocumentConflict::Missing);
        logOnce(m_loggedMissingFile, onLogError,
                QStringLiteral("md reload skipped (file missing): %1 — 미저장 %2")
                        .arg(m_path, QString::number(Text::characterCount(m_text)))
                    + QStringLiteral("자를 유지한다. 읽어올 내용이 없다; 남기려면 '저장'으로 이 경로에 "
                                     "다시 만들어야 한다."));
    } else {
        setConflict(std::nullopt);
    }
}

// A write in place that was killed in the middle is completed before anybody reads half of it.
void MarkdownDocumentModel::recoverInterruptedWrite()
{
    const auto target = MarkdownFileWriter::target(m_path);
    if (!target.resolved)
        return;
    const InterruptedWrite interrupted = finishInterruptedWrite(target.path);
    if (interrupted.outcome == InterruptedWrite::Outcome::Finished) {
        logInfo(QStringLiteral("md interrupted save finished: ") + m_path
                + QStringLiteral(" — 제자리 쓰기 도중 끊긴 저장을 옆의 기록으로 마쳤다."));
        return;
    }
    if (interrupted.outcome != InterruptedWrite::Outcome::Left)
        return;
    const auto slot =
        evacuationURL(m_path, folderOf(interrupted.record), interrupted.unwritten, whatIsOnDisk);
    const bool kept = slot.kind == EvacuationSlot::Kind::AlreadySaved
        || (slot.kind == EvacuationSlot::Kind::Use
            && writeAtomically(slot.path, interrupted.unwritten, evacuationMode(m_path)));
    if (kept)
        QFile::remove(interrupted.record);
    logError(QStringLiteral("md interrupted save not finished: ") + m_path + QStringLiteral(" → ")
             + (kept ? slot.path : interrupted.record)
             + QStringLiteral(" — 제자리 쓰기가 도중에 끊겼고 파일이 그 뒤 달라졌거나 쓸 수 없다. 저장하려던 "
                              "내용을 옆에 남겼다. 필요하면 이 파일을 직접 옮길 것."));
}

DiskJob MarkdownDocumentModel::saveJob(bool force) const
{
    return {force ? DiskJob::Kind::ForcedSave : DiskJob::Kind::Autosave, m_path, m_text, m_savedText};
}

void MarkdownDocumentModel::save(bool force)
{
    settle();
    cancelAutosave();
    const DiskJob job = saveJob(force);
    applySave(job, perform(job));
    if (std::exchange(m_lookWaiting, false))
        lookAtChange();
}

void MarkdownDocumentModel::setSaveProblem(const QString &problem)
{
    if (std::exchange(m_saveProblem, problem) != problem)
        Q_EMIT stateChanged();
}

void MarkdownDocumentModel::applySave(const DiskJob &job, const DiskReport &report)
{
    using Outcome = DiskReport::Outcome;
    const bool forced = job.kind == DiskJob::Kind::ForcedSave;
    const QString unsaved = QStringLiteral("미저장 ") + QString::number(report.characters);
    if (report.seen.exists)
        m_loggedMissingFile = false;
    setSaveProblem(report.outcome == Outcome::Failed           ? report.error
                       : report.outcome == Outcome::Unresolved ? MarkdownFileWriter::unresolvedText()
                                                               : QString());
    noteSight(report.seen, forced ? QStringLiteral("save") : QStringLiteral("autosave"));
    // The next try waits again, however long this text has been waiting.
    if (report.outcome != Outcome::Written && m_dirty && !forced)
        m_firstDirtyAt = Clock::now();

    switch (report.outcome) {
    case Outcome::NotWritten:
        if (report.seen.exists) {
            setConflict(DocumentConflict::Unreadable);
            if (forced)
                logOnce(m_loggedBlockedWrite, onLogError,
                        QStringLiteral("md save blocked (unreadable file): ") + m_path
                            + QStringLiteral(" — 읽지 못한 파일 위에 ") + QString::number(report.characters)
                            + QStringLiteral("자 버퍼를 쓰지 않는다(원본 보호). 원인을 고친 뒤 '다시 "
                                             "읽기'로 재시도할 것."));
        } else if (m_dirty) {
            setConflict(DocumentConflict::Missing);
            if (m_watchRequested && m_watcher)
                armWatch(); // a folder that was renamed took the watched file along unseen
            logOnce(m_loggedMissingFile, onLogInfo,
                    QStringLiteral("md autosave skipped (file missing): ") + m_path + QStringLiteral(" — ")
                        + unsaved
                        + QStringLiteral("자. 옛 경로에 되살리지 않는다; 남기려면 '저장'을 눌러야 한다."));
        }
        break;
    case Outcome::HeldBack:
        if (m_conflict == DocumentConflict::ExternalChange)
            break;
        setConflict(DocumentConflict::ExternalChange);
        logInfo(QStringLiteral("md autosave held (external change): ") + QFileInfo(m_path).fileName());
        break;
    case Outcome::Unresolved:
        logError(QStringLiteral("md save aborted (symlink chain unresolved): ") + m_path
                 + QStringLiteral(" — ") + QString::number(report.hops)
                 + QStringLiteral("홉을 따라가도 실제 파일에 닿지 못했다(순환 링크이거나 비정상적으로 "
                                  "깊다). 지금 쓰면 사용자의 링크를 일반 파일로 갈아치우게 되므로 쓰지 "
                                  "않는다. ")
                 + unsaved + QStringLiteral("자는 버퍼에 남는다."));
        break;
    case Outcome::Failed:
        noteWriteAttempt(report.links);
        logError(QStringLiteral("md save failed: ") + m_path + QStringLiteral(" — ") + report.error);
        break;
    case Outcome::Written:
        noteWriteAttempt(report.links);
        noteWritten(job, report.written);
        break;
    }
}

void MarkdownDocumentModel::noteWriteAttempt(quint64 links)
{
    if (links < 2)
        m_loggedHardLinkSave = false;
    else
        logOnce(m_loggedHardLinkSave, onLogInfo,
                QStringLiteral("md save non-atomic (hard link): ") + m_path
                    + QStringLiteral(" — 이 파일은 하드링크가 걸려 있어(링크 수 ") + QString::number(links)
                    + QStringLiteral(") 원자적 교체 대신 제자리 쓰기를 한다. rename은 링크를 끊어 다른 "
                                     "이름이 옛 내용에 영원히 매달리게 만드는데, 그 조용한 영구 손상이 "
                                     "반쯤 잘린 파일보다 나쁘다."));
}

void MarkdownDocumentModel::noteWritten(const DiskJob &job, const QString &written)
{
    m_loggedMissingFile = false;
    // An autosave leaves what was typed while it was under way.
    const bool typedMeanwhile = m_text != job.text;
    if (!typedMeanwhile)
        m_firstDirtyAt.reset();
    publish(typedMeanwhile ? m_text : written, written, std::nullopt);
    if (m_watchRequested && !m_watcher && !m_dirWatch)
        armWatch();
}

} // namespace Vesk
