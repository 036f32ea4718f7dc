import QtQuick
import Vesk.Controls
import Vesk.Chat

// What the agent does right now and for how long; lower while a card asks.
Bar {
    id: bar

    required property RunStatus status
    signal backgroundOpened()

    readonly property bool waits: status.waitsForApproval || status.waitsForAnswer

    visible: status.isRunning
    implicitHeight: waits ? Theme.px(32) : Theme.px(50)
    edge: waits ? Theme.waitFill : Theme.accent
    Accessible.role: Accessible.StatusBar
    Accessible.name: status.activity

    Row {
        id: activity
        x: 16
        y: bar.waits || hint.text.length === 0 ? Math.round((bar.height - height) / 2) : 7
        height: Theme.uiLine
        spacing: 8

        SessionMark {
            anchors.verticalCenter: parent.verticalCenter
            kind: bar.status.waitsForApproval ? SessionMarks.WaitApproval
                : bar.status.waitsForAnswer ? SessionMarks.WaitAnswer : SessionMarks.Running
        }
        Label {
            height: parent.height
            width: Math.max(0, Math.min(implicitWidth, bar.width - Theme.px(100)
                                        - (background.visible ? background.width + 12 : 0)))
            text: bar.status.activity
            font: Theme.uiBold
            Accessible.ignored: true
        }
        Label {
            height: parent.height
            text: ChatTime.elapsed(bar.status.startedAt, ElapsedClock.now)
            font: Theme.secondary
            color: Theme.text2
            Accessible.ignored: true
        }
    }
    Label {
        id: hint

        readonly property real below: bar.width - 32 - (background.visible ? background.width + 12 : 0)
        readonly property real beside: bar.width - activity.width - 48 - (background.visible ? background.width + 12 : 0)

        x: bar.waits ? bar.width - 16 - width - (background.visible ? background.width + 12 : 0) : 16
        y: bar.waits ? activity.y : activity.y + activity.height
        width: Math.max(0, Math.min(implicitWidth, bar.waits ? beside : below))
        height: bar.waits ? Theme.uiLine : Theme.metaLine
        text: bar.status.hint
        font: Theme.meta
        color: Theme.text3

        HoverHandler {
            id: hintHover
        }
        HoverTip {
            control: hint
            wanted: hintHover.hovered
            text: bar.status.hintHelp
        }
    }
    ChipButton {
        id: background
        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        visible: bar.status.backgroundCount > 0
        text: "배경 " + bar.status.backgroundCount
        iconName: "background"
        tone: "info"
        tip: "백그라운드 패널 열기 — 이 세션이 돌린 워크플로·하위 에이전트 진행"
        Accessible.description: "탭하면 백그라운드 패널 열기"
        onClicked: bar.backgroundOpened()
    }
    ClockHold {
        clock: ElapsedClock
        active: bar.status.isRunning
    }
}
