pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// A status and its issues. A drag begins on a card and ends over another column, so the list itself does not move
// with the pointer: it scrolls by wheel, bar and keys.
Rectangle {
    id: column

    required property int index
    required property string word
    required property string label
    required property int status
    required property int count
    required property IssueKanbanCards cards
    required property IssueKanbanModel board
    required property string selectedPath
    property bool keyed: false
    // The key of the card on its way.
    property string draggedKey
    property bool dropTarget: false

    signal picked(string key)
    signal dragBegun(string key, string title)
    signal dragMoved(point scenePoint)
    signal dragEnded()

    radius: Theme.radius
    color: dropTarget ? Theme.accentSoft : Theme.panel
    border.width: dropTarget ? 2 : 1
    border.color: dropTarget ? Theme.accent : Theme.line

    Item {
        id: head
        x: 12
        width: parent.width - 24
        height: Theme.px(38)
        Accessible.role: Accessible.Heading
        Accessible.name: column.label + " " + column.count

        StatusMark {
            id: mark
            anchors.verticalCenter: parent.verticalCenter
            status: column.status
        }
        Label {
            id: name
            x: mark.width + 8
            width: Math.min(implicitWidth, parent.width - x - number.width - 8 - (note.visible ? note.implicitWidth + 8 : 0))
            height: parent.height
            text: column.label
            font: Theme.uiBold
            Accessible.ignored: true
        }
        Label {
            id: note
            anchors.left: name.right
            anchors.leftMargin: 8
            height: parent.height
            visible: column.status === 6
            text: "다른 값"
            font: Theme.meta
            color: Theme.text3
            Accessible.ignored: true
        }
        Label {
            id: number
            anchors.right: parent.right
            height: parent.height
            text: column.count
            font: Theme.secondary
            color: Theme.text2
            Accessible.ignored: true
        }
    }
    ListView {
        id: list
        anchors.top: head.bottom
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 4
        width: parent.width
        leftMargin: 8
        rightMargin: 8
        topMargin: 4 // of a ring
        bottomMargin: 8
        spacing: 8
        clip: true
        interactive: false
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: 0
        highlightResizeDuration: 0
        reuseItems: true
        model: column.cards
        currentIndex: column.board.currentColumn === column.index ? column.cards?.rowOf(column.board.currentKey) ?? -1 : -1
        Accessible.role: Accessible.List
        Accessible.name: column.label

        function scrollBy(pixels: real): void {
            const least = originY - topMargin
            const most = originY + Math.max(0, contentHeight + bottomMargin - height)
            contentY = Math.max(least, Math.min(Math.max(least, most), contentY + pixels))
        }

        WheelHandler {
            acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
            acceptedModifiers: Qt.NoModifier
            onWheel: event => list.scrollBy(-event.angleDelta.y / 2)
        }

        delegate: IssueKanbanCard {
            width: column.width - 16
            chosen: path.length > 0 && path === column.selectedPath
            ringed: column.keyed && ListView.isCurrentItem
            dragged: column.draggedKey === key
            onPicked: column.picked(key)
            onOpened: column.board.open(key)
            onDragBegun: column.dragBegun(key, issueId + " " + title)
            onDragMoved: point => column.dragMoved(point)
            onDragEnded: column.dragEnded()
        }
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
}
