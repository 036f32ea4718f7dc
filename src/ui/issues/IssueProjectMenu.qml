pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// The projects, whose issues open in a window of their own.
Menu {
    id: menu

    required property IssuesView view

    y: parent ? parent.height + 4 : 0

    Instantiator {
        model: menu.view.projects

        MenuRow {
            required property string modelData

            text: modelData
            checkable: true
            checked: modelData === menu.view.alias
            onTriggered: menu.view.openProject(modelData)
        }
        onObjectAdded: (index, object) => menu.insertItem(index, object)
        onObjectRemoved: (index, object) => menu.removeItem(object)
    }
}
