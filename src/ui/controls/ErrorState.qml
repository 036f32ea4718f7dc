import QtQuick
import Vesk.Controls

// What stands in a list that could not be read: the real reason, and what can be done.
Column {
    id: failure

    required property string text
    property bool canRetry: true

    signal retryTriggered()
    signal copyTriggered()

    width: Math.min(480, parent ? parent.width - 32 : 480)
    spacing: 8
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    Row {
        width: parent.width
        spacing: 8

        Icon {
            id: sign
            name: "warning"
            color: Theme.danger
        }
        Label {
            width: parent.width - sign.width - parent.spacing
            text: failure.text
            color: Theme.danger
            lineHeight: Theme.uiLine
            lineHeightMode: Text.FixedHeight
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            Accessible.ignored: true
        }
    }
    Row {
        x: sign.width + 8
        spacing: 8

        VButton {
            visible: failure.canRetry
            text: "다시 시도"
            onClicked: failure.retryTriggered()
        }
        VButton {
            kind: VButton.Quiet
            text: "복사"
            onClicked: failure.copyTriggered()
        }
    }
}
