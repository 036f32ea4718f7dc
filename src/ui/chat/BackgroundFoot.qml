import QtQuick
import Vesk.Controls
import Vesk.Chat

// Below the list: why a file did not open, and what stops everything that runs.
Column {
    id: foot

    required property BackgroundModel work

    Hairline {
        width: parent.width
        visible: problem.visible || stopRow.visible
    }
    Label {
        id: problem
        x: 16
        width: parent.width - 32
        visible: text.length > 0
        topPadding: 8
        bottomPadding: 8
        text: foot.work.problem
        font: Theme.secondary
        color: Theme.danger
        wrapMode: Text.Wrap
        maximumLineCount: 3
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
    Item {
        id: stopRow
        width: parent.width
        height: Theme.px(44)
        visible: foot.work.isRunning

        Label {
            anchors.left: parent.left
            anchors.leftMargin: 16
            anchors.right: stop.left
            anchors.rightMargin: 8
            height: parent.height
            text: "세션 전체가 멈춥니다"
            font: Theme.secondary
            color: Theme.text3
        }
        VButton {
            id: stop
            anchors.right: parent.right
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            kind: VButton.Destructive
            text: "배경 작업 중단"
            tip: foot.work.status.backgroundStopHelp
            onClicked: foot.work.status.stop()
        }
    }
}
