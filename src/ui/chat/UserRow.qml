import QtQuick
import Vesk.Controls
import Vesk.Chat

// What the person said.
Rectangle {
    id: item

    required property TimelineRow row

    signal linkChosen(string link, string html)

    implicitHeight: body.height + 16
    radius: Theme.radius
    color: Theme.mine
    Accessible.role: Accessible.ListItem
    Accessible.name: row.accessibleText

    HoverHandler {
        id: hover
    }
    Column {
        id: body
        x: 12
        y: 8
        width: parent.width - 24
        spacing: 2

        Row {
            height: Theme.metaLine
            spacing: 8

            Label {
                text: "나"
                font: Theme.meta
                color: Theme.text3
                Accessible.ignored: true
            }
            Label {
                text: item.row.time
                font: Theme.meta
                color: Theme.text3
                Accessible.ignored: true
            }
        }
        MarkdownBlocks {
            width: parent.width
            visible: item.row.hasText
            blocks: item.row.blocks
            onLinkChosen: (link, html) => item.linkChosen(link, html)
        }
        Flow {
            width: parent.width
            topPadding: 4
            spacing: 6
            visible: item.row.attachments.length > 0

            Repeater {
                model: item.row.attachments

                Chip {
                    required property string modelData
                    text: modelData
                    iconName: "file"
                    outlined: true
                }
            }
        }
    }
    CopyButton {
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 4
        shown: hover.hovered
        text: "메시지 복사"
        onClicked: item.row.copy()
    }
}
