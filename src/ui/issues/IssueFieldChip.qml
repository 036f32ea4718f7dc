pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Issues

// One field of an issue; a press opens a place to write another value.
T.AbstractButton {
    id: chip

    required property string name
    required property string value
    required property IssueDetail detail

    implicitWidth: Math.min(key.implicitWidth + words.implicitWidth + 21, 320)
    implicitHeight: Theme.px(28)
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: name + " " + (value.length > 0 ? value : "비어 있음")
    Accessible.description: "고치기"
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    onClicked: editor.setSource(Qt.resolvedUrl("IssueFieldEdit.qml"), {
        parent: chip, detail: detail, name: name, value: value, visible: true })

    contentItem: Item {
        Row {
            x: 8
            height: parent.height
            spacing: 5

            Label {
                id: key
                height: parent.height
                text: chip.name
                font: Theme.meta
                color: Theme.text3
                Accessible.ignored: true
            }
            Label {
                id: words
                width: Math.min(implicitWidth, chip.width - key.width - 21)
                height: parent.height
                text: chip.value.length > 0 ? chip.value : "—"
                font: chip.value.length > 0 ? Theme.secondaryBold : Theme.secondary
                color: chip.value.length > 0 ? Theme.text : Theme.text3
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
    Loader { id: editor }
    Connections {
        target: editor.item as IssueFieldEdit
        function onClosed(): void { editor.source = "" }
    }
}
