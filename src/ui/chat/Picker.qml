pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Chat

// A choice of the next turn, whose list opens upward.
VButton {
    id: button

    required property PickerModel picker
    required property string name
    property color tint: Theme.text2
    property var rowTints: []

    kind: VButton.Quiet
    leftPadding: 8
    rightPadding: 6
    focusPolicy: Qt.TabFocus
    tip: menu.item ? "" : picker.help
    Accessible.role: Accessible.ButtonMenu
    Accessible.name: name + " " + picker.label
    onClicked: menu.setSource(Qt.resolvedUrl("PickerMenu.qml"),
                             { parent: button, picker: picker, rowTints: rowTints, visible: true })

    contentItem: Item {
        // From what the words want, not from what they get: the button's own width follows from this.
        implicitWidth: words.rest + label.implicitWidth

        Row {
            id: words

            readonly property real rest: (sign.visible ? sign.width + spacing : 0) + (drift.visible ? drift.width + spacing : 0)
                + spacing + chevron.width

            anchors.centerIn: parent
            spacing: 5

            Icon {
                id: sign
                anchors.verticalCenter: parent.verticalCenter
                visible: button.picker.icon.length > 0
                name: button.picker.icon
                size: 14
                color: button.tint
            }
            Label {
                id: label
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, button.availableWidth - words.rest)
                text: button.picker.label
                color: button.tint
                Accessible.ignored: true
            }
            Icon {
                id: drift
                anchors.verticalCenter: parent.verticalCenter
                visible: button.picker.drift.length > 0
                name: "warning"
                size: 14
                color: Theme.warning
            }
            Icon {
                id: chevron
                anchors.verticalCenter: parent.verticalCenter
                name: "chevron-down"
                size: 12
                color: Theme.text3
            }
        }
    }

    // By address: a component written here could not see this file's ids.
    Loader {
        id: menu
    }
    Connections {
        target: menu.item as PickerMenu
        function onClosed(): void {
            menu.source = ""
        }
    }
}
