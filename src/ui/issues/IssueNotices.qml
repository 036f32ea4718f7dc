pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// What was done, with a way back, and what could not be done.
FocusScope {
    id: notices

    required property IssuesView view

    property string told
    property bool undoable: false

    // The one that had the keyboard is gone.
    signal keysFreed()

    // A notice that takes the place of another begins its time anew.
    function tell(text: string, undo: bool): void {
        told = ""
        undoable = undo
        told = text
    }
    function settle(act: var): void {
        const hadKeys = activeFocus
        act()
        if (hadKeys)
            keysFreed()
    }

    width: 360
    height: column.height
    z: 2

    Connections {
        target: notices.view
        function onStatusChanged(id: string, word: string): void { notices.tell(id + " → " + word, true) }
        function onStatusUndone(id: string): void { notices.tell(id + "의 상태를 되돌렸습니다", false) }
        function onTold(text: string): void { notices.tell(text, false) }
    }
    Column {
        id: column
        width: parent.width
        spacing: 8

        Toast {
            width: column.width
            visible: title.length > 0
            title: notices.told
            actionText: notices.undoable ? "되돌리기" : ""
            actionKeys: "Ctrl Z"
            onActionTriggered: notices.settle(() => {
                notices.told = ""
                notices.view.undoStatus()
            })
            onDismissed: notices.settle(() => notices.told = "")
        }
        // None takes the place of another: what it told of may be all that is left of an edit.
        Repeater {
            model: notices.view.toldProblems

            delegate: IssueFailure {
                width: column.width
                onClosed: text => notices.settle(() => notices.view.putAway(text))
            }
        }
    }
}
