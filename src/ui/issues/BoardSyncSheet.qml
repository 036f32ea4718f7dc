pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// What would be changed on the board, before it is.
Dialog {
    id: sheet

    required property IssuesView view

    function apply(): void {
        if (sync.apply())
            close()
    }

    title: "보드 맞추기"
    implicitWidth: 640

    contentItem: Column {
        spacing: 10

        Shortcut {
            sequences: ["Ctrl+Return", "Ctrl+Enter"]
            enabled: sync.canApply
            onActivated: sheet.apply()
        }

        BoardSync {
            id: sync
            view: sheet.view
        }
        FieldReason { text: sync.error }
        BoardChanges {
            width: parent.width
            title: sync.statusTitle
            lines: sync.statusLines
        }
        BoardChanges {
            width: parent.width
            title: sync.addedTitle
            lines: sync.addedLines
        }
        BoardChanges {
            width: parent.width
            title: sync.summaryTitle
            lines: sync.summaryLines
        }
        Column {
            width: parent.width

            Repeater {
                model: sync.remarks

                delegate: SheetText {
                    required property string modelData

                    text: modelData
                    font: Theme.secondary
                    color: Theme.text3
                }
            }
        }
    }
    footer: DialogButtons {
        VButton {
            focus: !sync.canApply
            text: sync.canApply ? "취소" : "닫기"
            onClicked: sheet.close()
        }
        VButton {
            visible: sync.canApply
            focus: sync.canApply
            kind: VButton.Primary
            text: "보드 고치기"
            keys: "Ctrl Enter"
            onClicked: sheet.apply()
        }
    }
}
