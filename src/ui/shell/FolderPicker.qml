import QtQuick
import QtQuick.Dialogs
import Vesk.Shell

// The desktop's folder dialog, in a file of its own so that its module is loaded only when it is asked for.
FolderDialog {
    id: picker

    required property AddProject form
    // Where the keyboard goes on when a folder was chosen.
    required property Item next

    title: "프로젝트 폴더 고르기"
    onAccepted: {
        form.folder = Desktop.localPath(selectedFolder)
        next.forceActiveFocus()
    }
    Component.onCompleted: open()
}
