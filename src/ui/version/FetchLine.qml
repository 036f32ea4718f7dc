import QtQuick
import Vesk.Controls

// A fetch that runs.
Rectangle {
    id: line

    signal cancelTriggered()

    implicitHeight: Theme.px(32)
    color: Theme.panel

    Row {
        x: 12
        height: parent.height
        spacing: 8

        RunningMark { anchors.verticalCenter: parent.verticalCenter }
        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: "원격을 확인하는 중"
            font: Theme.secondary
            color: Theme.text2
        }
    }
    VButton {
        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        height: Theme.px(24)
        kind: VButton.Quiet
        font: Theme.secondary
        text: "취소"
        onClicked: line.cancelTriggered()
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
