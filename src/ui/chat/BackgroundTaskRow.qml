import QtQuick
import Vesk.Controls
import Vesk.Chat

// A task: its state, its name and its kind, and below what else is known of it.
Item {
    id: row

    required property BackgroundEntry entry
    readonly property real gap: entry.isFirst ? 0 : 9

    implicitHeight: gap + words.height + 10
    Accessible.ignored: true

    Hairline {
        visible: !row.entry.isFirst
        y: 4
        width: parent.width
    }
    BackgroundMark {
        id: mark
        x: 16
        y: row.gap + 5 + Math.round((Theme.uiLine - height) / 2)
        workState: row.entry.workState
    }
    Column {
        id: words
        anchors.left: mark.right
        anchors.leftMargin: 8
        anchors.right: ending.left
        anchors.rightMargin: 8
        y: row.gap + 5

        Label {
            width: parent.width
            height: Theme.uiLine
            text: row.entry.title
            font: row.entry.isCode ? Theme.codeSmallBold : Theme.uiBold
            Accessible.ignored: true
        }
        Label {
            // Below the chips there is room up to the edge.
            width: row.width - words.x - 16
            height: Theme.secondaryLine
            visible: text.length > 0
            text: row.entry.detail
            font: Theme.secondary
            color: Theme.text2
            Accessible.ignored: true
        }
    }
    Row {
        id: ending
        anchors.right: parent.right
        anchors.rightMargin: 16
        y: row.gap + 5
        height: Theme.uiLine
        spacing: 6

        Chip {
            anchors.verticalCenter: parent.verticalCenter
            visible: row.entry.isRestored
            text: "지난 기록"
            outlined: true
            Accessible.ignored: true
        }
        Chip {
            anchors.verticalCenter: parent.verticalCenter
            visible: row.width >= Theme.px(280)
            text: row.entry.chip
            Accessible.ignored: true
        }
        Label {
            width: Math.max(Theme.px(34), implicitWidth)
            height: parent.height
            text: row.entry.time.length > 0 ? row.entry.time : ChatTime.elapsed(row.entry.since, ElapsedClock.now)
            font: Theme.meta
            color: Theme.text3
            horizontalAlignment: Text.AlignRight
            Accessible.ignored: true
        }
        Icon {
            anchors.verticalCenter: parent.verticalCenter
            opacity: row.entry.canOpen ? 1 : 0
            name: row.entry.isOpen ? "chevron-down" : "chevron-right"
            size: 12
            color: Theme.text3
        }
    }
}
