import QtQuick
import Vesk.Controls

// One past conversation: its title, below it how old and how large it is.
Item {
    id: row

    required property int index
    required property string key
    required property string title
    required property string detail
    required property bool isOpen
    property bool current: false
    property bool ringed: false

    readonly property bool acts: hover.hovered || ringed

    signal picked()
    signal resumeTriggered()
    signal deleteTriggered()

    width: ListView.view.width
    height: Theme.px(46)
    Accessible.role: Accessible.ListItem
    Accessible.name: title + ", " + detail + (isOpen ? ", 열림" : "")
    Accessible.selected: current
    Accessible.onPressAction: resumeTriggered()

    HoverHandler { id: hover }
    TapHandler {
        onTapped: row.picked()
        onDoubleTapped: row.resumeTriggered()
    }

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: 6
        anchors.rightMargin: 12
        radius: Theme.radius
        color: row.current ? Theme.selected : hover.hovered ? Theme.hover : "transparent"

        FocusRing {
            visible: row.ringed
            gap: -2
        }
    }

    Column {
        x: 14
        anchors.verticalCenter: parent.verticalCenter
        width: (row.acts ? actions.x : row.width - 20) - x - 6

        Label {
            width: parent.width
            text: row.title
            Accessible.ignored: true
        }
        Row {
            spacing: 6

            Label {
                visible: row.isOpen
                text: "열림"
                font: Theme.meta
                color: Theme.accent
                Accessible.ignored: true
            }
            Label {
                text: row.detail
                font: Theme.meta
                color: Theme.text3
                Accessible.ignored: true
            }
        }
    }
    Row {
        id: actions
        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        visible: row.acts
        spacing: 4

        IconButton {
            iconName: "resume"
            text: row.isOpen ? "열린 탭으로" : "이어가기"
            keys: "Enter"
            focusPolicy: Qt.NoFocus
            onClicked: row.resumeTriggered()
        }
        IconButton {
            iconName: "trash"
            text: "휴지통으로"
            keys: "Delete"
            focusPolicy: Qt.NoFocus
            onClicked: row.deleteTriggered()
        }
    }
}
