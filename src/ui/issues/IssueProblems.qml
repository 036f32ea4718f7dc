pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// What is wrong with the relations; a row leads to the issue that it is mended in.
Menu {
    id: menu

    required property IssuesView view

    x: parent ? parent.width - width : 0
    y: parent ? parent.height + 4 : 0
    leastWidth: 440
    title: "관계 문제"

    Instantiator {
        model: menu.view.problems

        MenuRow {
            required property int index
            required property string modelData

            description: modelData
            text: menu.view.problemId(index)
            iconName: "warning"
            onTriggered: menu.view.openProblem(index)
        }
        onObjectAdded: (index, object) => menu.insertItem(index, object)
        onObjectRemoved: (index, object) => menu.removeItem(object)
    }
}
