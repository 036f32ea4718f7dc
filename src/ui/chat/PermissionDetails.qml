pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Chat

// Every argument of a request, in full; a long one scrolls within.
Rectangle {
    id: box

    required property PermissionCard card
    required property real room

    implicitHeight: Math.min(lines.implicitHeight + 16, room)
    radius: Theme.radius
    color: Theme.well
    Accessible.role: Accessible.Grouping
    Accessible.name: "실행 요청 상세"

    Flickable {
        id: flick
        anchors.fill: parent
        contentHeight: lines.implicitHeight + 16
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        clip: true
        activeFocusOnTab: interactive
        T.ScrollBar.vertical: ScrollBar {}

        Keys.onUpPressed: flick.contentY = Math.max(0, flick.contentY - 40)
        Keys.onDownPressed: flick.contentY = Math.min(flick.contentHeight - flick.height, flick.contentY + 40)

        Column {
            id: lines
            x: 12
            y: 8
            width: flick.width - 24

            Repeater {
                model: box.card.details

                Item {
                    id: line

                    required property var modelData

                    width: lines.width
                    implicitHeight: value.height
                    Accessible.role: Accessible.StaticText
                    Accessible.name: (modelData.key.length > 0 ? modelData.key + ": " : "") + modelData.value

                    Text {
                        id: key
                        text: line.modelData.key.length > 0 ? line.modelData.key + ": " : ""
                        textFormat: Text.PlainText
                        font: Theme.code
                        color: Theme.text3
                        lineHeight: Theme.codeLine
                        lineHeightMode: Text.FixedHeight
                        Accessible.ignored: true
                    }
                    Text {
                        id: value
                        x: key.implicitWidth
                        width: line.width - x
                        text: line.modelData.value
                        textFormat: Text.PlainText
                        font: Theme.code
                        color: Theme.text
                        lineHeight: Theme.codeLine
                        lineHeightMode: Text.FixedHeight
                        wrapMode: Text.WrapAnywhere
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
}
