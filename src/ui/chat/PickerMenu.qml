pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Chat

// The rows of a picker, and below them what governs in place of the choice.
Menu {
    id: menu

    required property PickerModel picker
    required property var rowTints

    y: -height - 4

    Instantiator {
        model: menu.picker

        MenuRow {
            id: row

            required property int index
            required property var model
            readonly property bool behindLine: model.separated

            text: model.label
            description: model.description
            iconName: model.icon
            tint: menu.rowTints.length > index ? menu.rowTints[index] : Theme.text
            checkable: true
            checked: model.chosen
            onTriggered: menu.picker.choose(index)
        }
        onObjectAdded: (index, object) => {
            if (object.behindLine)
                menu.addItem(line.createObject(menu.contentItem))
            menu.addItem(object)
        }
        onObjectRemoved: (index, object) => menu.removeItem(object)
    }
    Component {
        id: line

        MenuLine {}
    }
    Item {
        visible: menu.picker.drift.length > 0
        implicitWidth: drift.implicitWidth + 44
        implicitHeight: visible ? Theme.px(30) : 0

        Icon {
            x: 10
            anchors.verticalCenter: parent.verticalCenter
            name: "warning"
            size: 14
            color: Theme.warning
        }
        Label {
            id: drift
            x: 34
            height: parent.height
            text: menu.picker.drift
            font: Theme.secondary
            color: Theme.warning
        }
    }
}
