import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Issues

// An issue that this one waits for, or that waits for it; a press shows it.
T.AbstractButton {
    id: chip

    required property string issueId
    required property string title
    required property int statusKind
    required property bool struck
    required property bool missing
    required property string word
    required property IssuesView view

    implicitWidth: row.implicitWidth + 16
    implicitHeight: Theme.px(28)
    enabled: !missing
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.Link
    Accessible.name: word + " " + issueId + " " + (missing ? "없는 이슈" : title)
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    onClicked: view.selectId(issueId)

    contentItem: Item {
        Row {
            id: row
            x: 8
            height: parent.height
            spacing: 5

            Label {
                height: parent.height
                text: chip.word
                font: Theme.meta
                color: Theme.text3
                Accessible.ignored: true
            }
            StatusMark {
                anchors.verticalCenter: parent.verticalCenter
                status: chip.statusKind
                size: 12
            }
            StruckLabel {
                height: parent.height
                text: chip.issueId
                font: Theme.codeSmall
                color: chip.missing ? Theme.warning : chip.struck ? Theme.text3 : Theme.text
                struck: chip.struck
                Accessible.ignored: true
            }
        }
    }
    background: Item {
        Rectangle {
            anchors.centerIn: parent
            width: parent.width
            height: Theme.px(22)
            radius: Theme.radius
            color: chip.hovered ? Theme.hover : "transparent"
            border.color: Theme.line2

            FocusRing { visible: chip.visualFocus }
        }
    }
    HoverTip {
        wanted: chip.hovered
        text: chip.missing ? "이 폴더에 없는 이슈입니다" : chip.title
    }
}
