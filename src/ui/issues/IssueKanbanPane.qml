pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// The issues without relations by status. A drag or Shift and an arrow moves a card, arrows go among them.
FocusScope {
    id: pane

    required property IssuesView view

    readonly property real gap: 12
    readonly property real columnWidth: kanban.columnWidth(area.width, gap, Theme.px(210))
    property bool keyed: false
    property string draggedKey
    property string draggedTitle
    property point dragPoint
    property string dropWord: "-"

    function dragTo(scenePoint: point): void {
        const over = area.mapFromItem(null, scenePoint)
        const inArea = over.y >= 0 && over.x >= 0 && over.x < area.width
        dragPoint = pane.mapFromItem(null, scenePoint)
        const word = inArea ? kanban.wordAt(over.x + area.contentX, columnWidth, gap) : filter.vacantAt(scenePoint)
        dropWord = kanban.takes(draggedKey, word) ? word : "-"
    }
    function endDrag(drops: bool): void {
        const key = draggedKey
        const word = dropWord
        draggedKey = ""
        dropWord = "-"
        if (drops && key.length > 0 && word !== "-")
            kanban.move(key, word)
    }
    function revealColumn(): void {
        const x = kanban.currentColumn * (columnWidth + gap)
        if (kanban.currentColumn >= 0)
            area.contentX = Math.max(x + columnWidth - area.width, Math.min(area.contentX, x))
    }
    function act(key: int, shifted: bool): bool {
        switch (key) {
        case Qt.Key_Left: shifted ? kanban.shift(-1) : kanban.step(-1, 0); return true
        case Qt.Key_Right: shifted ? kanban.shift(1) : kanban.step(1, 0); return true
        case Qt.Key_Up: kanban.step(0, -1); return true
        case Qt.Key_Down: kanban.step(0, 1); return true
        case Qt.Key_Return:
        case Qt.Key_Enter: kanban.open(kanban.currentKey); return true
        case Qt.Key_Space: kanban.choose(kanban.currentKey); return true
        default: return false
        }
    }

    Accessible.role: Accessible.Pane
    Accessible.name: "칸반"

    IssueKanbanModel {
        id: kanban
        view: pane.view
        onCurrentChanged: pane.revealColumn()
    }
    Rectangle {
        anchors.fill: parent
        color: Theme.canvas
    }
    IssueKanbanFilter {
        id: filter
        width: parent.width
        board: kanban
        dropWord: pane.dropWord
    }
    Flickable {
        id: area
        objectName: "kanbanArea"
        anchors.top: filter.bottom
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 16
        x: 16
        width: parent.width - 32
        contentWidth: columns.width
        interactive: false
        clip: contentWidth > width
        focus: true
        activeFocusOnTab: true
        Accessible.role: Accessible.Grouping
        Accessible.name: "칸반"
        Accessible.description: kanban.currentText
        onActiveFocusChanged: {
            if (!activeFocus)
                pane.keyed = false
        }
        onContentWidthChanged: scrollBy(0)
        onWidthChanged: scrollBy(0)

        function scrollBy(pixels: real): void {
            contentX = Math.max(0, Math.min(contentWidth - width, contentX + pixels))
        }

        // Of the Tab that came here only the end is heard.
        Keys.onReleased: event => {
            pane.keyed = true
            event.accepted = false
        }
        Keys.onPressed: event => {
            const shifted = (event.modifiers & Qt.ShiftModifier) !== 0
            const plain = (event.modifiers & ~(Qt.ShiftModifier | Qt.KeypadModifier)) === Qt.NoModifier
            pane.keyed = true
            event.accepted = plain && pane.act(event.key, shifted)
        }
        WheelHandler {
            acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
            orientation: Qt.Horizontal
            onWheel: event => area.scrollBy(-event.angleDelta.x / 2)
        }
        WheelHandler {
            acceptedModifiers: Qt.ShiftModifier
            onWheel: event => area.scrollBy(-(event.angleDelta.y + event.angleDelta.x) / 2)
        }

        Row {
            id: columns
            height: area.height
            spacing: pane.gap

            Repeater {
                model: kanban

                delegate: IssueKanbanColumn {
                    width: pane.columnWidth
                    height: columns.height
                    board: kanban
                    selectedPath: pane.view.selectedPath
                    keyed: pane.keyed && area.activeFocus
                    draggedKey: pane.draggedKey
                    dropTarget: pane.draggedKey.length > 0 && pane.dropWord === word
                    onPicked: key => {
                        area.forceActiveFocus(Qt.MouseFocusReason)
                        pane.keyed = false
                        kanban.choose(key)
                    }
                    onDragBegun: (key, title) => {
                        pane.draggedKey = key
                        pane.draggedTitle = title
                        if (!kanban.canMove(key)) {
                            pane.draggedKey = ""
                            kanban.refuse(key)
                        }
                    }
                    onDragMoved: point => {
                        if (pane.draggedKey.length > 0)
                            pane.dragTo(point)
                    }
                    onDragEnded: pane.endDrag(true)
                }
            }
        }
    }
    FocusRing {
        anchors.fill: area
        visible: area.activeFocus && pane.keyed && kanban.currentColumn < 0
    }
    ScrollBar {
        anchors.left: area.left
        anchors.right: area.right
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 3
        orientation: Qt.Horizontal
        size: area.visibleArea.widthRatio
        position: area.visibleArea.xPosition
        onPositionChanged: {
            if (pressed)
                area.contentX = position * area.contentWidth
        }
    }
    EmptyState {
        anchors.horizontalCenter: area.horizontalCenter
        y: area.y + Math.max(16, (area.height - height) / 3)
        visible: text.length > 0
        text: kanban.emptyText
    }

    IssueKanbanGhost {
        text: pane.draggedKey.length > 0 ? pane.draggedTitle : ""
        at: pane.dragPoint
    }
    // At an edge the columns beyond it come.
    Timer {
        readonly property real way: pane.dragPoint.x > pane.width - 48 ? 12 : pane.dragPoint.x < 48 ? -12 : 0

        interval: 16
        repeat: true
        running: pane.draggedKey.length > 0 && way !== 0 && area.contentWidth > area.width
        onTriggered: area.scrollBy(way)
    }
    Shortcut {
        sequences: ["Escape"]
        enabled: pane.draggedKey.length > 0
        onActivated: pane.endDrag(false)
    }
}
