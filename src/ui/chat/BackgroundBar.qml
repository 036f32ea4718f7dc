import QtQuick
import Vesk.Controls
import Vesk.Chat

// The turn is over, and work that it started goes on.
Bar {
    id: bar

    required property RunStatus status

    signal opened()

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
        anchors.right: look.left
        anchors.rightMargin: 8
        height: parent.height
        text: bar.status.backgroundText
        font: Theme.uiBold
        Accessible.ignored: true
    }
    // All of the bar opens the panel, but for its buttons.
    TapHandler {
        onTapped: bar.opened()
    }
    VButton {
        id: look
        anchors.right: stop.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        kind: VButton.Quiet
        text: "탭하여 보기"
        tip: "백그라운드 패널 열기 — 이 세션이 돌린 워크플로·하위 에이전트 진행"
        onClicked: bar.opened()
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
