import QtQuick
import Vesk.Controls
import Vesk.Chat

// The turn is over, and work that it started goes on.
Bar {
    id: bar

    required property RunStatus status

    visible: !status.isRunning && status.backgroundCount > 0
    implicitHeight: Theme.px(36)
    Accessible.role: Accessible.StatusBar
    Accessible.name: status.backgroundText

    SessionMark {
        id: mark
        x: 16
        anchors.verticalCenter: parent.verticalCenter
        kind: SessionMarks.Background
    }
    Label {
        anchors.left: mark.right
        anchors.leftMargin: 8
        anchors.right: stop.left
        anchors.rightMargin: 8
        height: parent.height
        text: bar.status.backgroundText
        font: Theme.uiBold
        Accessible.ignored: true
    }
    VButton {
        id: stop
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        kind: VButton.Destructive
        text: "배경 작업 중단"
        tip: bar.status.backgroundStopHelp
        onClicked: bar.status.stop()
    }
}
