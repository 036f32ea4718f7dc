pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Chat

// The files that go along with the next message.
Flow {
    id: chips

    required property AttachmentList attachments
    readonly property int count: attachments.count

    spacing: 6

    Repeater {
        model: chips.attachments

        Rectangle {
            id: chip

            required property int index
            required property string name
            required property string size
            required property string path
            required property string preview
            required property bool saving

            readonly property bool isPicture: preview.length > 0 && picture.status !== Image.Error

            width: Math.min(words.x + words.width + 34, chips.width)
            height: Theme.px(28)
            radius: Theme.radius
            color: Theme.raised
            border.color: Theme.line2
            Accessible.role: Accessible.ListItem
            Accessible.name: name + " " + size

            HoverHandler {
                id: hover
            }
            HoverTip {
                control: chip
                wanted: hover.hovered
                text: chip.path
            }
            RunningMark {
                x: 6
                anchors.verticalCenter: parent.verticalCenter
                visible: chip.saving
                moving: chip.saving
            }
            Image {
                id: picture
                x: 4
                anchors.verticalCenter: parent.verticalCenter
                width: Theme.px(20)
                height: width
                visible: chip.isPicture
                source: chip.preview
                sourceSize.width: width * 2
                sourceSize.height: width * 2
                fillMode: Image.PreserveAspectCrop
                asynchronous: true
                Accessible.ignored: true
            }
            Icon {
                x: 8
                anchors.verticalCenter: parent.verticalCenter
                visible: !chip.isPicture && !chip.saving
                name: "file"
                size: 14
            }
            Row {
                id: words
                x: Theme.px(28)
                height: parent.height
                spacing: 6

                Label {
                    height: parent.height
                    width: Math.min(implicitWidth, 240)
                    text: chip.name
                    font: Theme.secondary
                    Accessible.ignored: true
                }
                Label {
                    height: parent.height
                    text: chip.size
                    font: Theme.meta
                    color: Theme.text3
                    Accessible.ignored: true
                }
            }
            IconButton {
                anchors.right: parent.right
                anchors.rightMargin: 3
                anchors.verticalCenter: parent.verticalCenter
                side: 24
                iconSize: 12
                iconName: "close"
                text: chip.name + " 빼기"
                onClicked: chips.attachments.remove(chip.index)
            }
        }
    }
}
