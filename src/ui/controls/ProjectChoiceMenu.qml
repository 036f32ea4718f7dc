pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls

// Every project, the shown one with a tick.
Menu {
    id: menu

    required property var projects // a QStringList
    required property string alias

    signal chosen(string alias)

    y: parent ? parent.height + 4 : 0

    Instantiator {
        model: menu.projects

        MenuRow {
            required property string modelData

            text: modelData
            checkable: true
            checked: modelData === menu.alias
            onTriggered: menu.chosen(modelData)
        }
        onObjectAdded: (index, object) => menu.insertItem(index, object)
        onObjectRemoved: (index, object) => menu.removeItem(object)
    }
}
