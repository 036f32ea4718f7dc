import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Chat

// The one line of a folded group, and the head of an open one.
T.AbstractButton {
    id: head

    required property ToolGroupModel group
    required property bool live

    implicitHeight: Theme.px(28)
    leftPadding: 8
    rightPadding: 12
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.Button
    Accessible.name: group.accessibleText
    Accessible.description: group.isOpen ? "접기" : "펼치기"

    Keys.onReturnPressed: head.clicked()
    Keys.onEnterPressed: head.clicked()

    background: Rectangle {
        radius: Theme.radius - 1
        color: head.hovered ? Theme.hover : head.group.isOpen ? Theme.panel : "transparent"

        FocusRing {
            visible: head.visualFocus
        }
    }
    contentItem: RowLayout {
        spacing: 8

        Icon {
            name: head.group.isOpen ? "chevron-down" : "chevron-right"
            color: Theme.text3
            size: 14
        }
        Label {
            text: head.group.title
            font: Theme.secondaryBold
            Accessible.ignored: true
        }
        Label {
            Layout.fillWidth: true
            text: head.group.counts
            font: Theme.secondary
            color: Theme.text2
            Accessible.ignored: true
        }
        Label {
            visible: text.length > 0
            text: head.group.failures
            font: Theme.meta
            color: Theme.danger
            Accessible.ignored: true
        }
        RunningMark {
            visible: head.group.isRunning
            moving: head.live
        }
        Label {
            visible: text.length > 0
            text: head.group.total
            font: Theme.meta
            color: Theme.text3
            Accessible.ignored: true
        }
    }
}
