import QtQuick
import Vesk.Controls
import Vesk.Chat

// The panel's name, how much runs and how much is done.
Item {
    id: head

    required property BackgroundModel work

    signal closeRequested()

    implicitHeight: Theme.px(36)

    Row {
        x: 16
        height: parent.height
        spacing: 8

        Label {
            height: parent.height
            text: "백그라운드"
            font: Theme.uiBold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Chip {
            anchors.verticalCenter: parent.verticalCenter
            visible: text.length > 0
            text: head.work.runningText
            tone: "info"
        }
        Chip {
            anchors.verticalCenter: parent.verticalCenter
            visible: text.length > 0 && head.width >= Theme.px(260)
            text: head.work.finishedText
        }
    }
    IconButton {
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        side: 24
        iconName: "close"
        text: "백그라운드 패널 닫기"
        keys: "Ctrl B"
        onClicked: head.closeRequested()
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
