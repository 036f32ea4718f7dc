pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// What happens in sessions that are not in view, and what can be taken back. It hangs below the headers: at the foot of
// a pane stand the buttons that answer prompts and send, and nothing may slip under a click there.
Column {
    id: stack

    required property Attention attention
    required property ResumeView resume

    // The toast that had the keyboard goes.
    signal takenBack()

    spacing: 8

    Repeater {
        // Another conversation is another toast, with a time of its own.
        model: stack.resume.trashedTitle.length > 0 ? [stack.resume.undoRefusal] : []

        delegate: Toast {
            required property string modelData
            readonly property bool refused: modelData.length > 0

            width: stack.width
            title: refused ? "되돌리지 못했습니다" : "휴지통으로 옮겼습니다"
            text: refused ? modelData : stack.resume.trashedTitle
            iconName: refused ? "warning" : "trash"
            iconColor: refused ? Theme.danger : Theme.text2
            lifetime: 12000
            actionText: refused ? "" : "되돌리기"
            onActionTriggered: {
                stack.takenBack()
                stack.resume.undoTrash()
            }
            onDismissed: stack.resume.dismissTrashed()
        }
    }
    Repeater {
        model: stack.attention.toasts

        delegate: Toast {
            required property string key
            required property string detail
            required property int sessionState
            required property bool isWaiting
            required property bool isFailed

            width: stack.width
            text: detail
            waits: isWaiting
            waitKind: sessionState
            iconName: isFailed ? "mark-failed" : "mark-finished"
            iconColor: isFailed ? Theme.danger : Theme.success
            actionText: "가기"
            onActionTriggered: stack.attention.goTo(key)
            onDismissed: stack.attention.dismissToast(key)
        }
    }
}
