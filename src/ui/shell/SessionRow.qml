import QtQuick
import Vesk.Controls
import Vesk.Shell

// A row of the sidebar: the heading of a project, or one of its sessions.
Item {
    id: row

    required property int index
    required property string key
    required property string kind
    required property string alias
    required property string path
    required property int lane
    required property string colorHex
    required property string title
    required property int sessionState
    required property string stateText
    required property string timeText
    required property bool unseen
    property bool current: false
    property bool ringed: false
    // Where a context menu opens: below the pointer, or at the row's start.
    property real menuX: 24

    readonly property bool isProject: kind === "project"

    signal activated()
    signal addRequested()
    signal menuRequested()

    width: ListView.view.width
    height: isProject ? Theme.px(28) + (index > 0 ? 8 : 0) : Theme.px(30)
    Accessible.role: Accessible.ListItem
    Accessible.name: isProject ? alias + ", 프로젝트, " + path
        : title + ", " + stateText + (timeText.length > 0 ? ", " + timeText : "")
    Accessible.selected: current
    Accessible.onPressAction: activated()

    HoverHandler { id: hover }
    TapHandler {
        onTapped: row.isProject ? row.ListView.view.forceActiveFocus() : row.activated()
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: eventPoint => {
            row.menuX = eventPoint.position.x
            row.menuRequested()
        }
    }

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: 6
        anchors.rightMargin: 6
        anchors.topMargin: row.isProject && row.index > 0 ? 8 : 0
        radius: Theme.radius
        color: row.current ? Theme.selected : hover.hovered && !row.isProject ? Theme.hover : "transparent"

        FocusRing {
            visible: row.ringed
            gap: -2
        }
    }

    Item {
        anchors.fill: parent
        anchors.topMargin: row.isProject && row.index > 0 ? 8 : 0
        anchors.leftMargin: row.isProject ? 10 : 18
        anchors.rightMargin: 14

        ProjectSquare {
            id: square
            anchors.verticalCenter: parent.verticalCenter
            visible: row.isProject
            color: row.lane >= 0 ? Theme.lane(row.lane) : row.colorHex
        }
        SessionMark {
            id: mark
            anchors.verticalCenter: parent.verticalCenter
            visible: !row.isProject
            kind: row.sessionState
            Accessible.ignored: true
        }
        Label {
            anchors.left: row.isProject ? square.right : mark.right
            anchors.leftMargin: row.isProject ? 6 : 8
            anchors.right: time.left
            anchors.rightMargin: 8
            height: parent.height
            text: row.title
            font: row.isProject || row.unseen ? Theme.uiBold : Theme.ui
            color: row.isProject ? Theme.text2 : Theme.text
            Accessible.ignored: true
        }
        Label {
            id: time
            anchors.right: parent.right
            height: parent.height
            visible: !row.isProject
            text: row.timeText
            font: Theme.meta
            color: Theme.text3
            Accessible.ignored: true
        }
        IconButton {
            anchors.right: parent.right
            anchors.rightMargin: -6
            anchors.verticalCenter: parent.verticalCenter
            visible: row.isProject && (hover.hovered || row.ringed)
            side: 24
            iconSize: 14
            iconName: "plus"
            text: row.alias + "에 새 세션"
            focusPolicy: Qt.NoFocus
            onClicked: row.addRequested()
        }
    }
}
