import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Issues

// One related issue: its status, number and title, and what is wrong with the reference.
Column {
    id: ref

    required property string issueId
    required property string title
    required property int statusKind
    required property bool struck
    required property bool missing
    required property string note

    signal triggered()

    readonly property bool settled: struck || statusKind === 4 || statusKind === 5

    T.AbstractButton {
        id: button
        width: parent.width
        height: Theme.px(28)
        enabled: !ref.missing
        focusPolicy: Qt.StrongFocus
        Accessible.role: Accessible.Link
        Accessible.name: ref.issueId + " " + (ref.missing ? "없는 이슈" : ref.title)
        Accessible.description: ref.note
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()
        onClicked: ref.triggered()

        contentItem: Item {
            StatusMark {
                id: mark
                x: 2
                anchors.verticalCenter: parent.verticalCenter
                status: ref.statusKind
                size: 14
            }
            StruckLabel {
                id: number
                anchors.left: mark.right
                anchors.leftMargin: 8
                height: parent.height
                text: ref.issueId
                font: Theme.codeSmall
                color: ref.settled ? Theme.text2 : Theme.text
                struck: ref.struck
                Accessible.ignored: true
            }
            Label {
                anchors.left: number.right
                anchors.leftMargin: 8
                width: parent.width - x - 4
                height: parent.height
                text: ref.missing ? "이 폴더에 없습니다" : ref.title
                color: ref.missing ? Theme.warning : ref.settled ? Theme.text2 : Theme.text
                Accessible.ignored: true
            }
        }
        background: Rectangle {
            radius: Theme.radius
            color: button.hovered ? Theme.hover : "transparent"

            FocusRing {
                visible: button.visualFocus
                gap: -2
            }
        }
    }
    Row {
        x: 2
        width: parent.width - 2
        visible: ref.note.length > 0
        spacing: 8
        bottomPadding: 4

        Icon {
            y: 2
            name: "warning"
            size: 12
            color: Theme.warning
        }
        Label {
            width: parent.width - 24
            text: ref.note
            font: Theme.meta
            color: Theme.warning
            lineHeight: Theme.metaLine
            lineHeightMode: Text.FixedHeight
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            Accessible.ignored: true
        }
    }
}
