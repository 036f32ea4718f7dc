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
        implicitWidth: words.implicitWidth

        Row {
            id: words
            anchors.centerIn: parent
            spacing: 5

            Icon {
                anchors.verticalCenter: parent.verticalCenter
                visible: button.picker.icon.length > 0
                name: button.picker.icon
                size: 14
                color: button.tint
            }
            Label {
                anchors.verticalCenter: parent.verticalCenter
                text: button.picker.label
                color: button.tint
                Accessible.ignored: true
            }
            Icon {
                anchors.verticalCenter: parent.verticalCenter
                visible: button.picker.drift.length > 0
                name: "warning"
                size: 14
                color: Theme.warning
            }
            Icon {
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
