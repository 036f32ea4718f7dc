import QtQuick
import Vesk.Controls
import Vesk.Issues

// What was done, with a way back, and what could not be done.
Column {
    id: notices

    required property IssuesView view

    property string told
    property bool undoable: false

    // A notice that takes the place of another begins its time anew.
    function tell(text: string, undo: bool): void {
        told = ""
        undoable = undo
        told = text
    }

    spacing: 8
    width: 360
    z: 2

    Connections {
        target: notices.view
        function onStatusChanged(id: string, word: string): void { notices.tell(id + " → " + word, true) }
        function onStatusUndone(id: string): void { notices.tell(id + "의 상태를 되돌렸습니다", false) }
        function onTold(text: string): void { notices.tell(text, false) }
        function onProblem(text: string): void { failure.text = text }
    }
    Toast {
        id: toast
        width: parent.width
        visible: title.length > 0
        title: notices.told
        actionText: notices.undoable ? "되돌리기" : ""
        actionKeys: "Ctrl Z"
        onActionTriggered: {
            notices.told = ""
            notices.view.undoStatus()
        }
        onDismissed: notices.told = ""
    }
    Rectangle {
        id: failure

        property string text

        width: parent.width
        height: words.height + 24
        visible: text.length > 0
        radius: Theme.radius
        color: Theme.dangerSoft
        border.color: Theme.danger
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text

        Icon {
            x: 12
            y: 14
            name: "warning"
            color: Theme.danger
        }
        Label {
            id: words
            x: 36
            y: 12
            width: parent.width - x - 36
            text: failure.text
            lineHeight: Theme.uiLine
            lineHeightMode: Text.FixedHeight
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            Accessible.ignored: true
        }
        IconButton {
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.margins: 6
            side: 24
            iconSize: 12
            iconName: "close"
            text: "닫기"
            onClicked: failure.text = ""
        }
    }
}
