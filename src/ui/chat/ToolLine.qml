pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vesk.Controls

// One tool call, which opens to show its output.
Column {
    id: line

    required property int index
    required property bool live
    required property string name
    required property string summary
    required property string outcome
    required property string duration
    required property string output
    required property bool hasOutput
    required property bool outputOpen
    required property string accessibleText

    signal toggled()

    T.AbstractButton {
        id: button
        width: parent.width
        implicitHeight: Theme.px(27)
        leftPadding: 9
        rightPadding: 12
        enabled: line.hasOutput
        focusPolicy: Qt.TabFocus
        Accessible.role: Accessible.Button
        Accessible.name: line.accessibleText
        Accessible.description: !line.hasOutput ? "" : line.outputOpen ? "출력 접기" : "출력 펼치기"
        onClicked: line.toggled()

        Keys.onReturnPressed: button.clicked()
        Keys.onEnterPressed: button.clicked()

        background: Rectangle {
            x: 1
            width: parent.width - 2
            color: button.hovered && line.hasOutput ? Theme.hover : "transparent"

            FocusRing {
                visible: button.visualFocus
                gap: -3
            }
        }
        contentItem: RowLayout {
            spacing: 8

            RunningMark {
                visible: line.outcome === "running"
                moving: line.live
            }
            Icon {
                visible: line.outcome !== "running"
                name: line.outcome === "ok" ? "mark-finished" : "mark-failed"
                color: line.outcome === "ok" ? Theme.success : Theme.danger
            }
            Label {
                Layout.minimumWidth: Theme.px(38)
                text: line.name
                font: Theme.secondaryBold
                Accessible.ignored: true
            }
            Label {
                Layout.fillWidth: true
                text: line.summary
                font: Theme.codeSmall
                color: Theme.text2
                Accessible.ignored: true
            }
            Label {
                text: line.duration
                font: Theme.meta
                color: Theme.text3
                Accessible.ignored: true
            }
        }
    }
    Repeater {
        model: line.outputOpen ? 1 : 0

        ToolOutput {
            x: 32
            width: line.width - 44
            text: line.output
        }
    }
}
