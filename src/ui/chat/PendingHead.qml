import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Chat

// The line that says how many messages wait.
T.AbstractButton {
    id: head

    required property PendingSends pending
    required property bool isOpen

    implicitHeight: Theme.px(32)
    leftPadding: 16
    rightPadding: 8
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.Button
    Accessible.name: pending.countText + ", 현재 턴이 끝나면 이어 전송됩니다"
    Accessible.description: isOpen ? "접기" : "펼치기"

    Keys.onReturnPressed: head.clicked()
    Keys.onEnterPressed: head.clicked()

    background: Item {
        FocusRing {
            visible: head.visualFocus
            gap: -3
        }
    }
    contentItem: RowLayout {
        spacing: 8

        Icon {
            name: "clock"
            size: 14
        }
        Text {
            Layout.fillWidth: true
            text: "<b>" + head.pending.countText + "</b>, 현재 턴이 끝나면 이어 전송됩니다"
            textFormat: Text.StyledText
            font: Theme.secondary
            color: Theme.text
            elide: Text.ElideRight
            Accessible.ignored: true
        }
        Chip {
            visible: head.width > Theme.px(460)
            text: "턴 종료 후 전송"
            outlined: true
        }
        VButton {
            Layout.preferredHeight: Theme.px(24)
            kind: VButton.Quiet
            font: Theme.secondary
            text: "전송 대기 취소"
            tip: "대기 중인 전송을 모두 취소"
            onClicked: head.pending.cancelAll()
        }
    }
}
