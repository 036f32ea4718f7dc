pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// Every project with its sessions, in one list. One tab stop: arrows, Home, End and letters move, Enter opens.
FocusScope {
    id: panel

    required property Workspace workspace
    required property Projects projects

    signal resumeRequested(string alias)
    signal windowRequested(int kind, string alias)
    signal removeProjectRequested(string alias)
    signal renameRequested(string key, string title)

    function activate(row: SessionRow): void {
        if (row.isProject)
            workspace.newSession(row.alias)
        else
            workspace.select(row.key)
    }
    function openMenu(row: SessionRow): void {
        menu.row = row
        menu.setSource(row.isProject ? "ProjectMenu.qml" : "SessionMenu.qml",
                       row.isProject ? { alias: row.alias, lane: row.lane, panel: panel }
                                     : { key: row.key, sessionTitle: row.title, panel: panel })
    }

    ListView {
        id: list
        anchors.fill: parent
        focus: true
        activeFocusOnTab: true
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: true
        reuseItems: false
        bottomMargin: 8
        model: panel.workspace.sidebar
        Accessible.role: Accessible.List
        Accessible.name: "프로젝트와 세션"

        Keys.onPressed: event => {
            if (event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier))
                return
            const row = currentItem as SessionRow
            event.accepted = true
            if (event.key === Qt.Key_Home)
                currentIndex = 0
            else if (event.key === Qt.Key_End)
                currentIndex = count - 1
            else if (row && (event.key === Qt.Key_Return || event.key === Qt.Key_Enter || event.key === Qt.Key_Space))
                panel.activate(row)
            else if (row && (event.key === Qt.Key_Menu || event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier))
                panel.openMenu(row)
            else if (row && event.key === Qt.Key_F2 && !row.isProject)
                panel.renameRequested(row.key, row.title)
            else if (event.text.length > 0 && event.text.charCodeAt(0) > 0x20)
                currentIndex = Math.max(0, panel.workspace.sidebar.rowStartingWith(event.text, currentIndex))
            else
                event.accepted = false
        }

        delegate: SessionRow {
            current: key === panel.workspace.currentKey
            ringed: list.activeFocus && ListView.isCurrentItem
            onActivated: {
                list.currentIndex = index
                panel.activate(this)
            }
            onAddRequested: panel.workspace.newSession(alias)
            onMenuRequested: {
                list.currentIndex = index
                panel.openMenu(this)
            }
        }
    }
    ScrollBar {
        anchors.top: list.top
        anchors.bottom: list.bottom
        anchors.right: list.right
        orientation: Qt.Vertical
        size: list.visibleArea.heightRatio
        position: list.visibleArea.yPosition
        onPositionChanged: {
            if (pressed)
                list.contentY = list.originY + position * list.contentHeight
        }
    }

    Connections {
        target: panel.workspace
        function onCurrentChanged(): void {
            const row = panel.workspace.sidebar.rowOf(panel.workspace.currentKey)
            if (row >= 0) {
                list.currentIndex = row
                list.positionViewAtIndex(row, ListView.Contain)
            }
        }
    }

    Loader {
        id: menu

        property SessionRow row

        onLoaded: {
            item.parent = row
            item.closed.connect(() => { menu.source = "" })
            item.popup(row, row.menuX, row.height)
        }
    }
}
