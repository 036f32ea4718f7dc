import QtQuick
import Vesk.Controls
import Vesk.Chat
import Vesk.Shell

// The background panel of the session that is shown, with the line that sizes it.
FocusScope {
    id: region

    required property BackgroundSide side

    focus: true

    Splitter {
        id: line
        height: parent.height
        after: true
        value: region.side.width
        from: region.side.least
        to: region.side.most
        label: "백그라운드 패널 너비"
        onMoved: value => region.side.view.backgroundWidth = value
    }
    BackgroundPanel {
        anchors.left: line.right
        anchors.right: parent.right
        height: parent.height
        focus: true
        chat: region.side.workspace.currentChat
        shown: region.side.shown
        onCloseRequested: region.side.workspace.backgroundShown = false
    }
}
