import QtQml
import QtQuick.Dialogs
import Vesk.Chat

FileDialog {
    required property AttachmentList attachments

    title: "첨부할 파일을 선택하세요 — 로컬 경로만 에이전트에 전달됩니다"
    fileMode: FileDialog.OpenFiles
    onAccepted: attachments.add(selectedFiles)
    Component.onCompleted: open()
}
