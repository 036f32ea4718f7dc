import QtQuick
import QtQuick.Dialogs
import Vesk.Issues

// The desktop's folder dialog, in a file of its own so that its module is loaded only when it is asked for.
FolderDialog {
    id: picker

    required property IssueOnboarding form

    title: "이슈 폴더 고르기"
    currentFolder: form.startFolder
    onAccepted: form.choose(selectedFolder)
    Component.onCompleted: open()
}
