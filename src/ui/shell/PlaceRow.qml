import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// One of the places below the projects: a window of its own.
T.Button {
    id: place

    required property string iconName
    required property string keys

    implicitHeight: Theme.px(30)
    leftPadding: 10
    font: Theme.ui
    focusPolicy: Qt.StrongFocus
    Accessible.name: text

    contentItem: Row {
        spacing: 10

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            name: place.iconName
            color: Theme.text2
        }
        Label {
            anchors.verticalCenter: parent.verticalCenter
            width: place.width - Theme.px(16) - 40 - cap.width
            text: place.text
            color: Theme.text2
            elide: Text.ElideRight
            Accessible.ignored: true
        }
        Label {
            id: cap
            anchors.verticalCenter: parent.verticalCenter
            visible: place.hovered || place.visualFocus
            text: place.keys
            font: Theme.meta
            color: Theme.text3
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: place.hovered || place.down ? Theme.hover : "transparent"

        FocusRing {
            visible: place.visualFocus
            gap: -2
        }
    }
}
