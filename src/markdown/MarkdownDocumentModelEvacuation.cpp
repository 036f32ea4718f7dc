// The end of an editor: edits go to the file, or beside it.
#include "base/Files.h"
#include "base/Text.h"
#include "markdown/DocumentFlight_p.h"
#include "markdown/DocumentFolders.h"

#include <QFile>

namespace Vesk
{

void MarkdownDocumentModel::flushOrEvacuate()
{
    settle();
    cancelAutosave();
    if (!m_dirty)
        return;
    save(false);
    if (m_dirty)
        evacuateUnsavedEdits(skipReason());
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

void MarkdownDocumentModel::evacuateUnsavedEdits(EvacuationReason reason)
{
    if (m_text.isEmpty())
        return;
    const QString why = QStringLiteral(" — ") + evacuationReasonText(reason) + QStringLiteral(". ");
    const QString unsaved =
        QStringLiteral("미저장 ") + QString::number(Text::characterCount(m_text)) + QStringLiteral("자를 ");
    const auto under = nearestExistingAncestor(m_path);
    if (!under) {
        logError(QStringLiteral("md evacuation failed: ") + m_path + why
                 + QStringLiteral("대피 사본을 둘 폴더가 하나도 없다. ") + unsaved
                 + QStringLiteral("잃는다."));
        return;
    }
    const QByteArray body = m_text.toUtf8();
    const EvacuationSlot slot = evacuationURL(m_path, *under, body, whatIsOnDisk);
    const QString arrow = m_path + QStringLiteral(" → ") + slot.path;
    switch (slot.kind) {
    case EvacuationSlot::Kind::Use:
        if (const auto written = writeAtomically(slot.path, body, evacuationMode(m_path)); !written)
            logError(QStringLiteral("md evacuation failed: ") + m_path + QStringLiteral(" — ")
                     + written.error().text);
        else
            logError(QStringLiteral("md unsaved edits evacuated: ") + arrow + why + unsaved
                     + QStringLiteral("옆에 남겼다(원래 경로에 되살리지도, 원본을 덮지도 않는다). "
                                      "필요하면 이 파일을 직접 옮길 것."));
        break;
    case EvacuationSlot::Kind::AlreadySaved:
        logInfo(QStringLiteral("md unsaved edits already evacuated: ") + arrow + why
                + QStringLiteral("같은 내용의 사본이 이미 있어 새로 만들지 않았다."));
        break;
    case EvacuationSlot::Kind::Exhausted:
        logError(QStringLiteral("md evacuation failed: ") + m_path + why
                 + QStringLiteral("대피 사본 이름을 50번 시도해도 비어 있는 것을 못 찾았다. ") + unsaved
                 + QStringLiteral("잃는다."));
        break;
    }
}

} // namespace Vesk
