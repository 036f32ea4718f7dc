import QtQuick
import Vesk.Controls

// The ground of what floats above a window: popups, menus, dialogs, toasts.
Item {
    id: frame

    property alias color: ground.color
    property color edge: Theme.line2
    property alias radius: ground.radius

    BorderImage {
        readonly property int reach: 20
        readonly property int drop: 5

        anchors.fill: parent
        anchors.leftMargin: -reach
        anchors.rightMargin: -reach
        anchors.topMargin: -reach + drop
        anchors.bottomMargin: -reach - drop
        border { left: 41; right: 41; top: 41; bottom: 41 }
        source: "image://shadow/" + String(Theme.shadow).slice(1)
    }
    Rectangle {
        id: ground
        anchors.fill: parent
        radius: Theme.radius
        color: Theme.raised
        border.color: frame.edge
    }
}
