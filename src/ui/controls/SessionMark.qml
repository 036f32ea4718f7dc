import QtQuick
import Vesk.Controls

// The state of a session in a box of 16 pixels: every state has its own shape, the colour repeats it.
Item {
    id: mark

    required property int kind

    readonly property bool waits: kind === SessionMarks.WaitApproval || kind === SessionMarks.WaitAnswer
    readonly property string description: {
        switch (kind) {
        case SessionMarks.WaitApproval: return "내 차례 · 승인"
        case SessionMarks.WaitAnswer: return "내 차례 · 질문"
        case SessionMarks.Failed: return "실패 · 안 읽음"
        case SessionMarks.Running: return "실행 중"
        case SessionMarks.Background: return "배경 작업만"
        case SessionMarks.Finished: return "끝남 · 안 읽음"
        default: return "쉼 · 읽음"
        }
    }

    implicitWidth: Theme.px(16)
    implicitHeight: Theme.px(16)
    Accessible.role: Accessible.Graphic
    Accessible.name: description

    Rectangle {
        anchors.centerIn: parent
        visible: mark.waits
        width: Theme.px(14)
        height: width
        radius: Theme.radiusSmall
        color: Theme.waitFill
        border.width: Theme.dark ? 0 : 1
        border.color: Theme.wait

        Text {
            anchors.centerIn: parent
            text: mark.kind === SessionMarks.WaitAnswer ? "?" : "!"
            font: Theme.metaBold
            color: Theme.onWait
            Accessible.ignored: true
        }
    }
    Icon {
        visible: name.length > 0
        name: {
            switch (mark.kind) {
            case SessionMarks.Failed: return "mark-failed"
            case SessionMarks.Background: return "mark-background"
            case SessionMarks.Finished: return "mark-finished"
            case SessionMarks.Idle: return "mark-idle"
            default: return ""
            }
        }
        color: {
            switch (mark.kind) {
            case SessionMarks.Failed: return Theme.danger
            case SessionMarks.Background: return Theme.info
            case SessionMarks.Finished: return Theme.success
            default: return Theme.text3
            }
        }
    }
    Loader {
        active: mark.kind === SessionMarks.Running
        sourceComponent: RunningMark {}
    }
}
