import QtQuick
import Vesk.Controls
import Vesk.Shell

// A folder that is dropped on the window becomes a project; files are left to whoever lies below.
DropArea {
    id: drop

    property string folder

    signal folderDropped(string folder)

    keys: ["text/uri-list"]
    onEntered: drag => {
        folder = drag.urls.length === 1 ? Desktop.folderPath(drag.urls[0]) : ""
        drag.accepted = folder.length > 0
    }
    onDropped: drop => {
        drop.accept()
        folderDropped(folder)
    }

    Rectangle {
        anchors.fill: parent
        visible: drop.containsDrag
        color: Theme.scrim

        Label {
            anchors.centerIn: parent
            padding: 16
            text: "놓으면 프로젝트로 추가합니다: " + drop.folder
            font: Theme.section
            color: Theme.onAccent
        }
    }
}
