pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Chat

// Messages that wait for the end of the turn; it opens to their texts.
Bar {
    id: bar

    required property PendingSends pending
    property bool isOpen: false

    signal takenBack()

    visible: pending.count > 0
    implicitHeight: Theme.px(32) + (isOpen ? list.height : 0)
    onVisibleChanged: isOpen = false
    clip: true

    PendingHead {
        id: head
        width: parent.width
        pending: bar.pending
        isOpen: bar.isOpen
        onClicked: bar.isOpen = !bar.isOpen
    }
    Column {
        id: list
        anchors.top: head.bottom
        width: parent.width
        bottomPadding: 6
        visible: bar.isOpen

        Repeater {
            model: bar.isOpen ? bar.pending : null

            Item {
                id: entry

                required property int index
                required property string text

                width: list.width
                height: Theme.px(26)

                Label {
                    x: 40
                    width: parent.width - x - 80
                    height: parent.height
                    text: entry.text
                    font: Theme.secondary
                    color: Theme.text2
                }
                Row {
                    anchors.right: parent.right
                    anchors.rightMargin: 12
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: 4

                    IconButton {
                        side: 24
                        iconSize: 14
                        iconName: "edit"
                        text: "컴포저로 되돌려 고치기"
                        onClicked: {
                            bar.pending.takeBack(entry.index)
                            bar.takenBack()
                        }
                    }
                    IconButton {
                        side: 24
                        iconSize: 14
                        iconName: "trash"
                        text: "이 메시지 보내지 않기"
                        onClicked: bar.pending.remove(entry.index)
                    }
                }
            }
        }
    }
}
