pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// The status and the fields of an issue; a click edits the row of its table.
Flow {
    id: fields

    required property IssueDetail detail

    spacing: 8

    VButton {
        id: status
        iconName: "status-" + ["todo", "doing", "blocked", "review", "done", "cancelled", "other", "unset"][fields.detail.statusKind]
        text: fields.detail.statusWord.length > 0 ? fields.detail.statusWord : "상태 없음"
        ink: Theme.statusColor(fields.detail.statusKind)
        rightPadding: 16 + Theme.px(12)
        tip: fields.detail.statusNote
        Accessible.role: Accessible.ButtonMenu
        Accessible.name: "상태 " + text
        onClicked: menu.setSource(Qt.resolvedUrl("StatusMenu.qml"), {
            parent: status, view: fields.detail.view, current: fields.detail.statusWord, visible: true })

        Icon {
            anchors.right: parent.right
            anchors.rightMargin: 9
            anchors.verticalCenter: parent.verticalCenter
            name: "chevron-down"
            size: 12
            color: Theme.text3
        }
        Loader { id: menu }
        Connections {
            target: menu.item as StatusMenu
            function onChosen(word: string): void { fields.detail.setStatus(word) }
            function onClosed(): void { menu.source = "" }
        }
    }
    Repeater {
        model: fields.detail.fields

        delegate: IssueFieldChip {
            detail: fields.detail
        }
    }
    Repeater {
        model: fields.detail.blockedBy

        delegate: IssueRefChip {
            word: "선행"
            view: fields.detail.view
        }
    }
    Repeater {
        model: fields.detail.blocks

        delegate: IssueRefChip {
            word: "후행"
            view: fields.detail.view
        }
    }
}
