import QtQuick
import Vesk.Controls
import Vesk.Chat

// What the agent answered, bare on the ground; an error has a red edge.
Item {
    id: item

    required property TimelineRow row

    readonly property real inset: row.isError ? 14 : 2

    signal linkChosen(string link, string html)

    // What stands above the first words is not to lie below the row before.
    z: hover.hovered ? 1 : 0
    implicitHeight: Math.max(body.height, waiting.visible ? waiting.height : 0)
    Accessible.role: Accessible.ListItem
    Accessible.name: row.accessibleText

    HoverHandler {
        id: hover
    }
    Rectangle {
        width: 2
        height: parent.height
        visible: item.row.isError
        color: Theme.danger
    }
    MarkdownBlocks {
        id: body
        x: item.inset
        width: item.width - item.inset
        blocks: item.row.blocks
        caret: item.row.growing
        onLinkChosen: (link, html) => item.linkChosen(link, html)
    }
    Item {
        id: waiting
        x: item.inset
        height: Theme.readingLine
        visible: item.row.growing && !item.row.hasText

        StreamCaret {
            y: 3
        }
    }
    Row {
        anchors.right: parent.right
        // Beside the first words, or above them where it would keep the pointer from a link.
        y: hover.hovered && body.hasLinkIn(Qt.rect(body.width - width, 0, width, height)) ? -height : -4
        visible: item.row.hasText
        spacing: 4

        Rectangle {
            width: time.implicitWidth + 8
            height: Theme.px(24)
            radius: Theme.radius
            opacity: hover.hovered || copy.visualFocus ? 1 : 0
            color: Theme.raised

            Label {
                id: time
                anchors.centerIn: parent
                text: item.row.time
                font: Theme.meta
                color: Theme.text3
                Accessible.ignored: true
            }
        }
        CopyButton {
            id: copy
            shown: hover.hovered
            text: "답변 복사"
            onClicked: item.row.copy()
        }
    }
}
