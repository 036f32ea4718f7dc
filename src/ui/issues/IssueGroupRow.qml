import QtQuick
import Vesk.Controls
import Vesk.Issues

// The head of a milestone with how much of it is settled, or the fold that holds its settled issues.
Item {
    id: head

    required property IssueListItem row

    Icon {
        id: arrow
        x: head.row.isFold ? 18 : 12
        anchors.verticalCenter: parent.verticalCenter
        name: head.row.folded ? "chevron-right" : "chevron-down"
        size: 12
        color: Theme.text3
    }
    Label {
        x: arrow.x + Theme.px(12) + (head.row.isFold ? 10 : 8)
        width: (share.visible ? share.x : parent.width - 20) - x - 8
        height: parent.height
        text: head.row.title
        font: head.row.isFold ? Theme.secondary : Theme.secondaryBold
        color: Theme.text2
        Accessible.ignored: true
    }
    Label {
        id: share
        anchors.right: bar.left
        anchors.rightMargin: 8
        height: parent.height
        visible: head.row.isHead
        text: head.row.done + "/" + head.row.total
        font: Theme.meta
        color: Theme.text2
        Accessible.ignored: true
    }
    Rectangle {
        id: bar
        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        visible: head.row.isHead
        width: 48
        height: 4
        radius: 2
        color: Theme.gaugeTrack

        Rectangle {
            width: head.row.total > 0 ? Math.round(parent.width * head.row.done / head.row.total) : 0
            height: parent.height
            radius: parent.radius
            color: Theme.success
        }
    }
}
