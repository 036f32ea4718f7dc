import QtQuick
import Vesk.Controls
import Vesk.Shell

// What stands in place of a session while the agent program is not there.
Column {
    id: guidance

    required property Workspace workspace

    // What comes before the command, and what comes after it.
    readonly property var lines: workspace.installText.split("\n")

    spacing: 12

    Label {
        width: parent.width
        text: guidance.lines[0]
        font: Theme.section
        wrapMode: Text.Wrap
        elide: Text.ElideNone
    }
    Rectangle {
        width: parent.width
        height: Theme.px(40)
        radius: Theme.radius
        color: Theme.well
        border.color: Theme.line

        TextInput {
            anchors.left: parent.left
            anchors.leftMargin: 12
            anchors.right: copy.left
            anchors.verticalCenter: parent.verticalCenter
            text: guidance.workspace.installCommand
            font: Theme.code
            color: Theme.text
            selectionColor: Theme.selected
            selectedTextColor: Theme.text
            readOnly: true
            selectByMouse: true
            clip: true
            activeFocusOnTab: true
            Accessible.name: "설치 명령"
        }
        VButton {
            id: copy
            anchors.right: parent.right
            anchors.rightMargin: 6
            anchors.verticalCenter: parent.verticalCenter
            kind: VButton.Quiet
            iconName: "copy"
            text: "복사"
            onClicked: Desktop.copyText(guidance.workspace.installCommand)
        }
    }
    SheetText { text: guidance.lines.slice(1).join("\n") }
}
