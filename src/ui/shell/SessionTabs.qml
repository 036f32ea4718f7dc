pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// The tabs of one pane. One tab stop; arrows choose, Delete closes, the menu key opens the tab's menu.
FocusScope {
    id: strip

    required property PaneFrame frame

    readonly property Workspace workspace: frame.workspace
    readonly property bool roomy: width >= Theme.px(320)

    // The gap between two tabs that is nearest to x: before which tab it is, and where.
    function gapAt(x: real): var {
        for (let index = 0; index < list.count; ++index) {
            const tab = list.itemAtIndex(index)
            if (tab && x < tab.x - list.contentX + tab.width / 2)
                return { position: index, x: Math.max(1, tab.x - list.contentX) }
        }
        return { position: list.count, x: Math.max(1, list.taken) }
    }
    function split(side: int): void {
        workspace.panes.focusPane(frame.pane)
        workspace.splitCurrent(side)
    }
    function select(index: int): void {
        frame.workspace.panes.focusPane(frame.pane)
        workspace.selectIndex(index)
    }

    implicitHeight: Theme.px(36)
    onActiveFocusChanged: {
        if (activeFocus && !frame.focused) {
            frame.entered()
            workspace.panes.focusPane(frame.pane)
        }
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
    }
    // Without a tab to bear the accent, the strip does.
    Rectangle {
        width: parent.width
        height: 2
        visible: strip.frame.bare && strip.frame.focused
        color: Theme.accent
    }

    ListView {
        id: list

        // Narrower tabs when there are many, then scrolling. The width is not that of the tabs: how wide they are
        // together is known only once it is laid out.
        readonly property real share: Math.max(Theme.px(120), width / Math.max(1, strip.frame.tabs.count))
        readonly property real taken: Math.min(width, contentWidth)

        width: Math.max(0, strip.width - add.width - splits.width - 16)
        height: parent.height
        orientation: ListView.Horizontal
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentWidth > width
        clip: interactive
        focus: true
        activeFocusOnTab: true
        keyNavigationEnabled: false
        reuseItems: false
        model: strip.frame.tabs
        currentIndex: strip.frame.shownIndex
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

        Keys.onLeftPressed: strip.select(currentIndex - 1)
        Keys.onRightPressed: strip.select(currentIndex + 1)
        Keys.onDeletePressed: strip.workspace.requestCloseCurrent()
        Keys.onPressed: event => {
            const tab = currentItem as SessionTab
            event.accepted = true
            if (event.key === Qt.Key_Home || event.key === Qt.Key_End)
                strip.select(event.key === Qt.Key_Home ? 0 : count - 1)
            else if (tab && (event.key === Qt.Key_Menu || event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier))
                tab.menuRequested()
            else
                event.accepted = false
        }

        delegate: SessionTab {
            height: list.height
            widest: Math.min(Theme.px(220), list.share)
            current: index === strip.frame.shownIndex
            accented: strip.frame.focused
            ringed: list.activeFocus && current
            onSelected: strip.workspace.select(key)
            onClosed: strip.workspace.requestClose(key)
            onMenuRequested: strip.frame.tabMenuRequested(this, key, title)
            onDragBegun: strip.workspace.tabDrag.begin(key, title)
            onDragged: scenePoint => strip.frame.tabDragged(scenePoint)
            onDropped: dropLater.restart()
        }
    }
    // Later: the tab may leave this strip by it, and is still telling its story.
    Timer {
        id: dropLater
        interval: 0
        onTriggered: strip.workspace.tabDrag.drop()
    }
    IconButton {
        id: add
        x: list.taken + 4
        anchors.verticalCenter: parent.verticalCenter
        iconName: "plus"
        text: "새 세션"
        keys: "Ctrl N"
        onClicked: {
            strip.workspace.panes.focusPane(strip.frame.pane)
            strip.workspace.newSession()
        }
    }
    Row {
        id: splits
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        visible: strip.roomy || strip.frame.bare
        width: visible ? implicitWidth : 0

        IconButton {
            visible: !strip.frame.bare
            iconName: "split-right"
            text: "오른쪽으로 나누기"
            keys: "Ctrl \\"
            onClicked: strip.split(Panes.Right)
        }
        IconButton {
            visible: !strip.frame.bare
            iconName: "split-down"
            text: "아래로 나누기"
            keys: "Ctrl Shift \\"
            onClicked: strip.split(Panes.Below)
        }
        IconButton {
            visible: strip.frame.bare
            iconName: "close"
            text: "칸 닫기"
            keys: "Ctrl W"
            onClicked: strip.workspace.panes.closePane(strip.frame.pane)
        }
    }
}
