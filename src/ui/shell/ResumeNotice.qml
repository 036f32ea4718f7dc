import QtQuick
import Vesk.Controls
import Vesk.Shell

// What could not be done with a conversation.
Banner {
    required property ResumeView view

    width: parent.width
    tone: "danger"
    text: view.notice
    onClosed: view.dismissNotice()
}
