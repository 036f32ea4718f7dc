pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// The tabs of the open sessions. One tab stop; arrows choose, Delete closes.
FocusScope {
    id: strip

    required property Workspace workspace

    implicitHeight: Theme.px(36)

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
    }

    ListView {
        id: list

        // As wide as its tabs want, narrower tabs when there are many, then scrolling.
        readonly property real room: strip.width - add.width - 8
        readonly property real share: Math.max(Theme.px(120), room / Math.max(1, strip.workspace.tabs.count))

        width: Math.min(room, contentWidth)
        height: parent.height
        orientation: ListView.Horizontal
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentWidth > width
        clip: interactive
        focus: true
        activeFocusOnTab: true
        keyNavigationEnabled: false
        reuseItems: false
        model: strip.workspace.tabs
        currentIndex: strip.workspace.currentIndex
        highlightMoveDuration: 0
        Accessible.role: Accessible.PageTabList
        Accessible.name: "열린 세션"

        onCurrentIndexChanged: settled.restart()
        onWidthChanged: settled.restart()

        // Later: finding the place lays tabs out, which is what the width comes from.
        Timer {
            id: settled
            interval: 0
            onTriggered: list.positionViewAtIndex(list.currentIndex, ListView.Contain)
        }

        Keys.onLeftPressed: strip.workspace.selectIndex(currentIndex - 1)
        Keys.onRightPressed: strip.workspace.selectIndex(currentIndex + 1)
        Keys.onDeletePressed: strip.workspace.requestClose(strip.workspace.currentKey)
        Keys.onPressed: event => {
            event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End
            if (event.accepted)
                strip.workspace.selectIndex(event.key === Qt.Key_Home ? 0 : count - 1)
        }

        delegate: SessionTab {
            height: list.height
            widest: Math.min(Theme.px(220), list.share)
            current: index === strip.workspace.currentIndex
            ringed: list.activeFocus && current
            onSelected: strip.workspace.selectIndex(index)
            onClosed: strip.workspace.requestClose(key)
        }
    }
    IconButton {
        id: add
        anchors.left: list.right
        anchors.leftMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        iconName: "plus"
        text: "새 세션"
        keys: "Ctrl N"
        onClicked: strip.workspace.newSession()
    }
}
