import QtQuick
import Vesk.Controls
import Vesk.Chat

// How much there is above, and how much of it is seen.
Item {
    id: row

    required property BackgroundEntry entry

    implicitHeight: Theme.px(22)
    Accessible.ignored: true

    Label {
        id: words
        x: 24 + Theme.px(16)
        width: Math.min(implicitWidth, parent.width - x - 36)
        height: parent.height
        text: row.entry.title
        font: Theme.meta
        color: Theme.text3
        Accessible.ignored: true
    }
    Icon {
        anchors.left: words.right
        anchors.leftMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        visible: row.entry.canOpen
        name: row.entry.isOpen ? "chevron-up" : "chevron-down"
        size: 12
        color: Theme.text3
    }
}
