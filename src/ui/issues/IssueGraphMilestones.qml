pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// The scopes of the graph.
Menu {
    id: menu

    required property IssueGraphModel graph

    y: parent ? parent.height + 4 : 0

    MenuRow {
        text: "마일스톤 전체"
        checkable: true
        checked: menu.graph.milestone.length === 0
        onTriggered: menu.graph.milestone = ""
    }
    MenuLine {}
    Instantiator {
        model: menu.graph.milestones

        MenuRow {
            required property string modelData

            text: modelData
            checkable: true
            checked: menu.graph.milestone === modelData
            onTriggered: menu.graph.milestone = modelData
        }
        onObjectAdded: (index, object) => menu.addItem(object)
        onObjectRemoved: (index, object) => menu.removeItem(object)
    }
}
