import QtQuick
import Vesk.Controls
import Vesk.Version

// The branch that is checked out, and how far it is from its remote.
Item {
    id: head

    required property VersionView view

    implicitHeight: visible ? column.height + 20 : 0
    visible: view.state === VersionView.Ready

    Column {
        id: column
        x: 12
        y: 12
        width: parent.width - 24
        spacing: 4

        Row {
            width: parent.width
            spacing: 8

            Icon {
                anchors.verticalCenter: parent.verticalCenter
                name: "version"
                size: 14
                color: Theme.accent
            }
            Label {
                width: parent.width - Theme.px(14) - 8
                text: head.view.branch
                font: Theme.codeBold
                Accessible.name: "브랜치 " + text
            }
        }
        Row {
            spacing: 6
            visible: head.view.aheadText.length > 0
            Accessible.role: Accessible.StaticText
            Accessible.name: head.view.aheadText + "개 보낼 것, " + head.view.behindText + "개 받을 것"

            Label {
                text: "↑" + head.view.aheadText
                font: Theme.secondaryBold
                color: head.view.aheadText === "0" ? Theme.text3 : Theme.accent
                Accessible.ignored: true
            }
            Label {
                text: "보낼 것"
                font: Theme.secondary
                color: Theme.text2
                rightPadding: 8
                Accessible.ignored: true
            }
            Label {
                text: "↓" + head.view.behindText
                font: Theme.secondaryBold
                color: head.view.behindText === "0" ? Theme.text3 : Theme.warning
                Accessible.ignored: true
            }
            Label {
                text: "받을 것"
                font: Theme.secondary
                color: Theme.text2
                Accessible.ignored: true
            }
        }
        Label {
            width: parent.width
            visible: text.length > 0
            text: head.view.trackingNote
            font: Theme.secondary
            color: Theme.text3
        }
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
