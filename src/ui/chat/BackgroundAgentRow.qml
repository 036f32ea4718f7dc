import QtQuick
import Vesk.Controls
import Vesk.Chat

// An agent of a workflow: its state, its name, its model and what it has used.
Item {
    id: row

    required property BackgroundEntry entry
    // Room for all columns; without it the model goes first, then the tool calls.
    readonly property bool wide: width >= Theme.px(360)
    readonly property bool middling: width >= Theme.px(300)

    implicitHeight: Theme.px(25)
    Accessible.ignored: true

    BackgroundMark {
        id: mark
        x: 38
        anchors.verticalCenter: parent.verticalCenter
        workState: row.entry.workState
    }
    Label {
        id: name
        anchors.left: mark.right
        anchors.leftMargin: 8
        anchors.right: again.left
        anchors.rightMargin: again.visible ? 6 : 0
        height: parent.height
        text: row.entry.title
        font: Theme.secondary
        Accessible.ignored: true
    }
    Label {
        id: again
        anchors.right: columns.left
        anchors.rightMargin: 8
        width: visible ? implicitWidth : 0
        height: parent.height
        visible: text.length > 0 && row.wide
        text: row.entry.detail
        font: Theme.meta
        color: Theme.warning
        Accessible.ignored: true
    }
    Row {
        id: columns
        anchors.right: parent.right
        anchors.rightMargin: 34
        height: parent.height
        spacing: 6

        Label {
            width: Theme.px(62)
            height: parent.height
            visible: row.wide
            text: row.entry.chip
            font: Theme.meta
            color: Theme.text2
            Accessible.ignored: true
        }
        Label {
            width: Theme.px(34)
            height: parent.height
            text: row.entry.tokens
            font: Theme.meta
            color: Theme.text2
            horizontalAlignment: Text.AlignRight
            Accessible.ignored: true
        }
        Label {
            width: Theme.px(32)
            height: parent.height
            visible: row.middling
            text: row.entry.calls
            font: Theme.meta
            color: Theme.text2
            horizontalAlignment: Text.AlignRight
            Accessible.ignored: true
        }
        Label {
            width: Theme.px(34)
            height: parent.height
            text: row.entry.time
            font: Theme.meta
            color: Theme.text3
            horizontalAlignment: Text.AlignRight
            Accessible.ignored: true
        }
    }
}
