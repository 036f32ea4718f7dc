pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// The projects whose conversations can be listed.
Menu {
    id: menu

    required property ResumeView view

    y: parent ? parent.height + 4 : 0

    Instantiator {
        model: menu.view.aliases

        MenuRow {
            required property string modelData

            text: modelData
            checkable: true
            checked: modelData === menu.view.alias
            onTriggered: menu.view.alias = modelData
        }
        onObjectAdded: (index, object) => menu.insertItem(index, object)
        onObjectRemoved: (index, object) => menu.removeItem(object)
    }
}
