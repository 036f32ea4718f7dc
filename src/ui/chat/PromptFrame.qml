import QtQuick
import Vesk.Controls
import Vesk.Chat

// The frame of what waits for the person: amber edge, head with mark, title and age.
Item {
    id: frame

    required property string title
    required property string remoteText
    required property int markKind
    required property date since
    default property alias content: body.data
    readonly property real headHeight: head.height

    implicitHeight: head.height + body.implicitHeight + 2

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: Theme.waitFill
    }
    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: 4
        anchors.topMargin: 1
        anchors.rightMargin: 1
        anchors.bottomMargin: 1
        radius: Theme.radius - 1
        color: Theme.raised
    }
    Rectangle {
        id: head
        x: 4
        y: 1
        width: parent.width - 5
        height: titles.implicitHeight + 16
        radius: Theme.radius - 1
        color: Theme.waitSoft

        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: parent.radius
            color: parent.color
        }
        SessionMark {
            x: 12
            y: 8 + Math.round((Theme.sectionLine - height) / 2)
            kind: frame.markKind
        }
        Column {
            id: titles
            x: 12 + Theme.px(16) + 8
            y: 8
            width: parent.width - x - age.width - 24
            spacing: 2

            Label {
                width: parent.width
                height: Theme.sectionLine
                text: frame.title
                font: Theme.section
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Label {
                width: parent.width
                visible: text.length > 0
                text: frame.remoteText
                font: Theme.secondary
                color: Theme.text2
                wrapMode: Text.Wrap
            }
        }
        Label {
            id: age
            anchors.right: parent.right
            anchors.rightMargin: 12
            y: 8
            height: Theme.sectionLine
            text: ChatTime.waiting(frame.since, ElapsedClock.now)
            font: Theme.secondary
            color: Theme.wait
        }
    }
    Item {
        id: body
        anchors.top: head.bottom
        x: 4
        width: parent.width - 5
        implicitHeight: children.length > 0 ? children[0].implicitHeight : 0
    }
    ClockHold {
        clock: ElapsedClock
    }
}
