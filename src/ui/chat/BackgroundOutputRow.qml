import QtQuick
import Vesk.Controls
import Vesk.Chat

// The file that holds a task's whole output.
Item {
    id: row

    required property BackgroundEntry entry

    implicitHeight: Theme.px(26)
    Accessible.ignored: true

    Icon {
        id: icon
        x: 24 + Theme.px(16)
        anchors.verticalCenter: parent.verticalCenter
        name: "open-external"
        size: 12
        color: Theme.accent
    }
    Label {
        anchors.left: icon.right
        anchors.leftMargin: 6
        anchors.right: parent.right
        anchors.rightMargin: 16
        height: parent.height
        text: row.entry.title
        font: Theme.codeSmall
        color: Theme.accent
        elide: Text.ElideLeft
        Accessible.ignored: true
    }
}
