import QtQuick
import Vesk.Controls
import Vesk.Chat

// A phase of a workflow, and how many of its agents are done.
Item {
    id: row

    required property BackgroundEntry entry

    implicitHeight: Theme.px(27)
    Accessible.ignored: true

    Icon {
        id: chevron
        x: 16
        anchors.verticalCenter: parent.verticalCenter
        opacity: row.entry.canOpen ? 1 : 0
        name: row.entry.isOpen ? "chevron-down" : "chevron-right"
        size: 14
        color: Theme.text2
    }
    Label {
        anchors.left: chevron.right
        anchors.leftMargin: 10
        anchors.right: bar.left
        anchors.rightMargin: 8
        height: parent.height
        text: row.entry.title
        font: Theme.secondaryBold
        Accessible.ignored: true
    }
    SegmentBar {
        id: bar
        anchors.right: count.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        visible: row.width >= Theme.px(280)
        width: visible ? implicitWidth : 0
        done: row.entry.done
        failed: row.entry.failed
        total: row.entry.total
    }
    Label {
        id: count
        anchors.right: parent.right
        anchors.rightMargin: 34
        width: Math.max(Theme.px(30), implicitWidth)
        height: parent.height
        text: row.entry.done + "/" + row.entry.total
        font: Theme.meta
        color: Theme.text2
        horizontalAlignment: Text.AlignRight
        Accessible.ignored: true
    }
}
