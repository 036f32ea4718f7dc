import QtQuick
import Vesk.Controls
import Vesk.Chat
import Vesk.Issues

// An issue on the kanban: number and priority, title, what else there is to know, progress, and who works on it.
Item {
    id: card

    required property string key
    required property string issueId
    required property string title
    required property int status
    required property string path
    required property string priority
    required property string meta
    required property int done
    required property int total
    required property int sessionMark
    required property string sessionText
    required property date sessionSince
    property bool chosen: false
    property bool ringed: false
    property bool dragged: false

    readonly property bool settled: status === 4 || status === 5
    readonly property bool running: sessionMark === SessionMarks.Running

    signal picked()
    signal opened()
    signal dragBegun()
    signal dragMoved(point scenePoint)
    signal dragEnded()

    width: ListView.view.width
    height: column.implicitHeight + 20
    opacity: dragged ? 0.45 : 1
    Accessible.role: Accessible.ListItem
    Accessible.name: issueId + ", " + title + (priority.length > 0 ? ", " + priority : "") + ", " + meta
        + (total > 0 ? ", " + done + "/" + total : "") + (sessionText.length > 0 ? ", " + sessionText : "")
    Accessible.selected: chosen
    Accessible.onPressAction: picked()

    HoverHandler { id: hover }
    TapHandler {
        onTapped: card.picked()
        onDoubleTapped: card.opened()
    }
    DragHandler {
        target: null
        grabPermissions: PointerHandler.CanTakeOverFromAnything
        onActiveChanged: active ? card.dragBegun() : card.dragEnded()
        onCentroidChanged: {
            if (active)
                card.dragMoved(centroid.scenePosition)
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: hover.hovered && !card.dragged ? Theme.hover : Theme.raised
        border.width: card.chosen ? 2 : 1
        border.color: card.chosen ? Theme.accent : Theme.line2

        FocusRing { visible: card.ringed }
    }

    Column {
        id: column
        x: 12
        y: 10
        width: parent.width - 24
        spacing: 3

        Item {
            width: parent.width
            height: Theme.codeSmallLine

            Label {
                width: parent.width - chip.width - 6
                height: parent.height
                text: card.issueId
                font: Theme.codeSmall
                color: Theme.text2
                Accessible.ignored: true
            }
            Chip {
                id: chip
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                visible: card.priority.length > 0
                text: card.priority
                tone: card.priority === "P0" && !card.settled ? "danger" : ""
                Accessible.ignored: true
            }
        }
        Label {
            width: parent.width
            text: card.title
            font: card.status === 5 ? Theme.uiStruck : Theme.ui
            color: card.settled ? Theme.text3 : Theme.text
            lineHeight: Theme.uiLine
            lineHeightMode: Text.FixedHeight
            wrapMode: Text.WordWrap
            maximumLineCount: 2
            Accessible.ignored: true
        }
        Label {
            width: parent.width
            visible: text.length > 0
            height: Theme.metaLine
            text: card.meta
            font: Theme.meta
            color: Theme.text2
            Accessible.ignored: true
        }
        Item {
            width: parent.width
            height: Theme.metaLine + 3
            visible: card.total > 0

            ShareBar {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - figures.width - 8
                share: card.total > 0 ? card.done / card.total : 0
            }
            Label {
                id: figures
                anchors.right: parent.right
                height: parent.height
                text: card.done + "/" + card.total
                font: Theme.meta
                color: Theme.text2
                Accessible.ignored: true
            }
        }
        Item {
            width: parent.width
            height: Theme.px(20)
            visible: card.sessionMark >= 0

            SessionMark {
                id: mark
                anchors.verticalCenter: parent.verticalCenter
                kind: Math.max(0, card.sessionMark)
                Accessible.ignored: true
            }
            Label {
                id: work
                x: mark.width + 6
                width: Math.min(implicitWidth, parent.width - x - (time.visible ? time.implicitWidth + 4 : 0))
                height: parent.height
                text: card.sessionText
                font: Theme.meta
                color: Theme.text2
                Accessible.ignored: true
            }
            Label {
                id: time
                x: work.x + work.width + 4
                height: parent.height
                visible: card.running
                text: visible ? "· " + ChatTime.elapsed(card.sessionSince, ElapsedClock.now) : ""
                font: Theme.meta
                color: Theme.text2
                Accessible.ignored: true

                ClockHold {
                    clock: ElapsedClock
                    active: card.running
                }
            }
        }
    }
}
