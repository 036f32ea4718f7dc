pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Version

// Changed files, one of them chosen.
FocusScope {
    id: pane

    required property ChangesModel files
    required property string label
    required property string current
    property real rowHeight: Theme.px(28)
    // The ring is for who moves by keys.
    property bool byKeys: false

    signal picked(string path)
    signal opened()
    signal backTriggered()
    signal copyAsked(string text)

    function move(row: int): void {
        const bounded = Math.max(0, Math.min(list.count - 1, row))
        if (list.count > 0) {
            pane.picked(files.pathAt(bounded))
            list.positionViewAtIndex(bounded, ListView.Contain)
        }
    }

    function openMenu(): void {
        list.positionViewAtIndex(currentRow, ListView.Contain);
        (list.itemAtIndex(currentRow) as ChangeRow)?.openMenu()
    }

    readonly property int currentRow: files.count > 0 ? files.rowOf(current) : -1

    // Chosen elsewhere; a reading that leaves the choice moves nothing.
    onCurrentRowChanged: {
        if (currentRow >= 0 && current !== followed)
            list.positionViewAtIndex(currentRow, ListView.Contain)
        followed = current
    }
    property string followed

    ListView {
        id: list
        anchors.fill: parent
        focus: true
        activeFocusOnTab: true
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: pane.files
        Accessible.role: Accessible.List
        Accessible.name: pane.label

        TapHandler { onTapped: list.forceActiveFocus() }
        Keys.onReleased: pane.byKeys = true
        Keys.onPressed: event => {
            event.accepted = true
            const page = Math.max(1, Math.floor(height / pane.rowHeight) - 1)
            if (event.key === Qt.Key_Down)
                pane.move(pane.currentRow + 1)
            else if (event.key === Qt.Key_Up)
                pane.move(pane.currentRow - 1)
            else if (event.key === Qt.Key_PageDown)
                pane.move(pane.currentRow + page)
            else if (event.key === Qt.Key_PageUp)
                pane.move(pane.currentRow - page)
            else if (event.key === Qt.Key_Home)
                pane.move(0)
            else if (event.key === Qt.Key_End)
                pane.move(count - 1)
            else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
                pane.opened()
            else if (event.key === Qt.Key_Escape)
                pane.backTriggered()
            else if (event.matches(StandardKey.Copy) && pane.currentRow >= 0)
                pane.copyAsked(pane.current)
            else if (event.key === Qt.Key_Menu || event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier)
                pane.openMenu()
            else
                event.accepted = false
        }

        delegate: ChangeRow {
            id: line

            height: pane.rowHeight
            current: path === pane.current
            ringed: current && list.activeFocus && pane.byKeys
            onPicked: {
                pane.byKeys = false
                list.forceActiveFocus()
                pane.picked(path)
            }
            onMenuRequested: (x, y) => menu.setSource("PathMenu.qml", { parent: line, x: x, y: y })
        }
    }
    Loader {
        id: menu
        onLoaded: (item as Menu).open()
    }
    Connections {
        target: menu.item as PathMenu
        function onCopyAsked(text: string): void { pane.copyAsked(text) }
        function onClosed(): void { menu.source = "" }
    }
    ScrollBar {
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.right: parent.right
        orientation: Qt.Vertical
        size: list.visibleArea.heightRatio
        position: list.visibleArea.yPosition
        onPositionChanged: {
            if (pressed)
                list.contentY = list.originY + position * list.contentHeight
        }
    }
}
