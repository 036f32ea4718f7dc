pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// One kind of change to the board.
Column {
    id: changes

    required property string title
    required property var lines

    visible: title.length > 0
    spacing: 4

    Label {
        text: changes.title
        font: Theme.uiBold
    }
    Rectangle {
        width: parent.width
        height: Math.min(list.contentHeight + 12, Theme.px(18) * 8 + 12)
        radius: Theme.radius
        color: Theme.well
        border.color: Theme.line

        ListView {
            id: list
            anchors.fill: parent
            anchors.margins: 6
            anchors.leftMargin: 12
            clip: true
            activeFocusOnTab: contentHeight > height
            boundsBehavior: Flickable.StopAtBounds
            model: changes.lines
            Accessible.role: Accessible.List
            Accessible.name: changes.title

            delegate: Label {
                required property string modelData

                width: ListView.view.width
                height: Theme.codeSmallLine
                text: modelData
                font: Theme.codeSmall
                Accessible.role: Accessible.ListItem
                Accessible.name: text
            }
        }
        FocusRing { visible: list.activeFocus }
    }
}
