pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// What happens in sessions that are not in view. It hangs below the headers: at the foot of a pane stand the buttons
// that answer prompts and send, and nothing may slip under a click there.
Column {
    id: stack

    required property Attention attention

    spacing: 8

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
