pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// The words that a status can be set to.
Menu {
    id: menu

    required property IssuesView view
    required property string current

    signal chosen(string word)

    leastWidth: 160
    y: parent ? parent.height + 4 : 0

    Instantiator {
        model: menu.view.statusWords

        MenuRow {
            required property string modelData
            readonly property int status: menu.view.statusKind(modelData)

            text: modelData
            iconName: "status-" + ["todo", "doing", "blocked", "review", "done", "cancelled", "other", "unset"][status]
            tint: Theme.statusColor(status)
            checkable: true
            checked: modelData === menu.current
            onTriggered: menu.chosen(modelData)
        }
        onObjectAdded: (index, object) => menu.insertItem(index, object)
        onObjectRemoved: (index, object) => menu.removeItem(object)
    }
}
