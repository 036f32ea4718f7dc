pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Version

// The history as a table with its graph. What is shown stays in place when rows come in above it.
FocusScope {
    id: table

    required property VersionView view

    readonly property CommitsModel commits: view.commits
    readonly property CommitColumns columns: CommitColumns {
        measures: table.view.measures
        lanes: table.commits.lanes
        room: table.width
    }
    readonly property real rowHeight: Theme.px(26)
    readonly property int currentRow: count > 0 ? commits.rowOf(view.selected) : -1
    readonly property int count: commits.count

    // Which row stood at the top, and how far it was scrolled out.
    property string anchorHash
    property real anchorOffset: -1
    // The ring is for who moves by keys.
    property bool byKeys: false
    property real lastY: 0

    signal picked()
    signal opened()

    // News above come and go; the rows that are looked at stay where they are.
    onYChanged: {
        if (list.contentY > list.originY)
            list.contentY = Math.max(list.originY, list.contentY + y - lastY)
        lastY = y
    }

    function showRow(row: int): void {
        const bounded = Math.max(0, Math.min(count - 1, row))
        view.select(commits.hashAt(bounded))
        list.positionViewAtIndex(bounded, ListView.Contain)
        // With the last one, what stands below it.
        if (bounded === count - 1 && list.contentHeight > list.height)
            list.contentY = list.originY + list.contentHeight + list.bottomMargin - list.height
        picked()
    }

    function openMenu(): void {
        list.positionViewAtIndex(currentRow, ListView.Contain);
        (list.itemAtIndex(currentRow) as CommitRow)?.openMenu()
    }

    CommitTableHead {
        id: head
        width: parent.width
        columns: table.columns
    }
    ListView {
        id: list
        anchors.top: head.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        focus: true
        activeFocusOnTab: true
        clip: true
        reuseItems: true
        boundsBehavior: Flickable.DragOverBounds
        bottomMargin: table.view.truncated ? more.implicitHeight : 0
        model: table.commits
        Accessible.role: Accessible.Table
        Accessible.name: "커밋"

        TapHandler { onTapped: list.forceActiveFocus() }
        Keys.onReleased: table.byKeys = true
        Keys.onPressed: event => {
            event.accepted = true
            const page = Math.max(1, Math.floor(height / table.rowHeight) - 1)
            if (event.key === Qt.Key_Down)
                table.showRow(table.currentRow + 1)
            else if (event.key === Qt.Key_Up)
                table.showRow(table.currentRow - 1)
            else if (event.key === Qt.Key_PageDown)
                table.showRow(table.currentRow + page)
            else if (event.key === Qt.Key_PageUp)
                table.showRow(table.currentRow - page)
            else if (event.key === Qt.Key_Home)
                table.showRow(0)
            else if (event.key === Qt.Key_End)
                table.showRow(table.count - 1)
            else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
                table.opened()
            else if (event.matches(StandardKey.Copy) && table.view.selected.length > 0)
                table.view.copy(table.view.selected)
            else if (event.key === Qt.Key_Menu || event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier)
                table.openMenu()
            else
                event.accepted = false
        }

        delegate: CommitRow {
            id: line

            columns: table.columns
            height: table.rowHeight
            current: index === table.currentRow
            ringed: current && list.activeFocus && table.byKeys
            onPicked: {
                table.byKeys = false
                list.forceActiveFocus()
                table.view.select(hash)
                table.picked()
            }
            onMenuRequested: (x, y) => menu.setSource("CommitMenu.qml", { parent: line, x: x, y: y })
        }
    }
    // Beside the list: within it the list would give its keys to the button that had them last.
    Item {
        anchors.fill: list
        clip: true

        MoreRow {
            id: more

            readonly property real place: list.originY + list.count * table.rowHeight - list.contentY

            y: place
            width: parent.width
            visible: table.view.truncated && place < list.height
            text: table.view.countText
            loading: table.view.loading
            onTriggered: {
                table.view.loadMore()
                list.forceActiveFocus()
            }
        }
    }
    PullArea {
        anchors.fill: list
        list: list
        onPulled: table.view.startFetch()
    }
    ScrollBar {
        anchors.top: list.top
        anchors.bottom: list.bottom
        anchors.right: parent.right
        orientation: Qt.Vertical
        size: list.visibleArea.heightRatio
        position: list.visibleArea.yPosition
        onPositionChanged: {
            if (pressed)
                list.contentY = list.originY + position * list.contentHeight
        }
    }
    Loader {
        id: menu
        onLoaded: (item as Menu).open()
    }
    Connections {
        target: menu.item as CommitMenu
        function onCopyAsked(text: string): void { table.view.copy(text) }
        function onClosed(): void { menu.source = "" }
    }
    Connections {
        target: table.view
        function onRowsAboutToChange(): void {
            const row = Math.floor((list.contentY - list.originY) / table.rowHeight)
            table.anchorHash = table.commits.hashAt(row)
            table.anchorOffset = row > 0 ? list.contentY - list.originY - row * table.rowHeight : -1
        }
        function onRowsChanged(): void {
            list.forceLayout()
            const row = table.commits.rowOf(table.anchorHash)
            if (table.anchorOffset >= 0 && row > 0)
                list.contentY = list.originY + row * table.rowHeight + table.anchorOffset
        }
        function onScopeChanged(): void {
            if (table.currentRow >= 0)
                list.positionViewAtIndex(table.currentRow, ListView.Contain)
        }
    }
}
