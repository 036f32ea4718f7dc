// The end of an editor: edits go to the file, or beside it.
#include "base/Files.h"
#include "base/Text.h"
#include "markdown/DocumentFlight_p.h"
#include "markdown/DocumentFolders.h"

#include <QDir>
#include <QFile>

namespace Vesk
{

DocumentFarewell MarkdownDocumentModel::flushOrEvacuate()
{
    settle();
    cancelAutosave();
    if (m_dirty)
        save(false);
    return m_dirty ? evacuateUnsavedEdits(skipReason()) : DocumentFarewell {};
}

EvacuationReason MarkdownDocumentModel::skipReason() const
{
    if (!QFile::exists(m_path))
        return EvacuationReason::FileMissing;
    if (m_conflict == DocumentConflict::ExternalChange)
        return EvacuationReason::ExternalChange;
    if (m_conflict == DocumentConflict::Unreadable)
        return EvacuationReason::Unreadable;
    return EvacuationReason::SaveFailed;
}

DocumentFarewell MarkdownDocumentModel::evacuateUnsavedEdits(EvacuationReason reason)
{
    if (m_text.isEmpty())
        return {};
    const QString why = QStringLiteral(" — ") + evacuationReasonText(reason) + QStringLiteral(". ");
    const QString unsaved =
        QStringLiteral("미저장 ") + QString::number(Text::characterCount(m_text)) + QStringLiteral("자를 ");
    if (const auto under = nearestExistingAncestor(m_path)) {
        if (const auto copy = copyInto(*under, why, unsaved))
            return {.kept = true, .copy = *copy};
    } else {
        logError(QStringLiteral("md evacuation failed: ") + m_path + why
                 + QStringLiteral("대피 사본을 둘 폴더가 하나도 없다. ") + unsaved
                 + QStringLiteral("잃는다."));
    }
    if (!m_lastResort.isEmpty() && QDir().mkpath(m_lastResort)) {
        if (const auto copy = copyInto(m_lastResort, why, unsaved))
            return {.kept = true, .copy = *copy};
    }
    return {.kept = false};
}

// The file that holds the text now; absent when none in this folder can.
std::optional<QString> MarkdownDocumentModel::copyInto(const QString &folder, const QString &why,
                                                       const QString &unsaved) const
{
    const QByteArray body = m_text.toUtf8();
    const EvacuationSlot slot = evacuationURL(m_path, folder, body, whatIsOnDisk);
    const QString arrow = m_path + QStringLiteral(" → ") + slot.path;
    switch (slot.kind) {
    case EvacuationSlot::Kind::Use:
        if (const auto written = writeAtomically(slot.path, body, evacuationMode(m_path)); !written) {
            logError(QStringLiteral("md evacuation failed: ") + m_path + QStringLiteral(" — ")
                     + written.error().text);
            return std::nullopt;
        }
        logError(QStringLiteral("md unsaved edits evacuated: ") + arrow + why + unsaved
                 + QStringLiteral("옆에 남겼다(원래 경로에 되살리지도, 원본을 덮지도 않는다). "
                                  "필요하면 이 파일을 직접 옮길 것."));
        return slot.path;
    case EvacuationSlot::Kind::AlreadySaved:
        logInfo(QStringLiteral("md unsaved edits already evacuated: ") + arrow + why
                + QStringLiteral("같은 내용의 사본이 이미 있어 새로 만들지 않았다."));
        return slot.path;
    case EvacuationSlot::Kind::Exhausted:
        logError(QStringLiteral("md evacuation failed: ") + m_path + why
                 + QStringLiteral("대피 사본 이름을 50번 시도해도 비어 있는 것을 못 찾았다. ") + unsaved
                 + QStringLiteral("잃는다."));
        return std::nullopt;
    }
    Q_UNREACHABLE();
}

} // namespace Vesk
