pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Chat

// A group of tool calls: one line, and below it a line for each call when it is open.
Rectangle {
    id: item

    required property TimelineRow row
    // Something of this session still works, so an unfinished call may yet report.
    required property bool live
    readonly property ToolGroupModel group: row.tools

    // The person is about to open or fold something here.
    signal aboutToChange()

    implicitHeight: head.height + (group.isOpen ? lines.height : 0) + 2
    radius: Theme.radius
    color: group.isOpen ? Theme.canvas : "transparent"
    border.color: Theme.line
    Accessible.role: Accessible.ListItem
    Accessible.name: group.accessibleText

    ToolsHead {
        id: head
        x: 1
        y: 1
        width: parent.width - 2
        group: item.group
        live: item.live
        onClicked: {
            item.aboutToChange()
            item.group.toggle()
        }
    }
    Column {
        id: lines
        anchors.top: head.bottom
        width: parent.width
        visible: item.group.isOpen
        bottomPadding: 5

        Repeater {
            model: item.group.isOpen ? item.group : null

            ToolLine {
                width: lines.width
                live: item.live
                onToggled: {
                    item.aboutToChange()
                    item.group.toggleOutput(index)
                }
            }
        }
    }
}
