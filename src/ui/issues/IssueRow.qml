import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Issues

// An issue of the list. A click on its mark sets its status.
Item {
    id: issue

    required property IssueListItem row

    readonly property bool hasFile: row.path.length > 0
    readonly property real textX: 15 + Theme.px(26)
    readonly property bool settled: row.statusKind === 4 || row.statusKind === 5

    function openStatusMenu(): void {
        if (hasFile)
            menu.setSource(Qt.resolvedUrl("StatusMenu.qml"),
                           { parent: mark, view: row.view, current: row.statusWord, visible: true })
    }

    T.AbstractButton {
        id: mark
        x: 12
        y: Theme.px(3)
        width: Theme.px(24)
        height: Theme.px(24)
        enabled: issue.hasFile
        focusPolicy: Qt.NoFocus
        Accessible.role: Accessible.ButtonMenu
        Accessible.name: issue.row.issueId + " 상태 " + issue.row.statusWord
        onClicked: issue.openStatusMenu()

        contentItem: Item {
            StatusMark {
                anchors.centerIn: parent
                status: issue.row.statusKind
                size: 14
            }
        }
        background: Rectangle {
            radius: Theme.radiusSmall
            color: mark.hovered ? Theme.line2 : "transparent"
        }
        HoverTip {
            wanted: mark.hovered
            text: issue.row.statusWord.length > 0 ? "상태 " + issue.row.statusWord : "상태 없음"
            keys: "S"
        }
        Loader { id: menu }
        Connections {
            target: menu.item as StatusMenu
            function onChosen(word: string): void { issue.row.view.setStatus(issue.row.path, word) }
            function onClosed(): void { menu.source = "" }
        }
    }
    StruckLabel {
        x: issue.textX
        y: Theme.px(4)
        width: parent.width - x - 20
        height: Theme.uiLine
        text: issue.row.title
        color: issue.settled || !issue.hasFile ? Theme.text3 : Theme.text
        struck: issue.row.statusKind === 5
        Accessible.ignored: true
    }
    Label {
        id: number
        x: issue.textX
        y: Theme.px(24)
        width: Math.min(implicitWidth, parent.width * 0.5)
        height: Theme.metaLine
        text: issue.row.issueId
        font: Theme.codeSmall
        color: Theme.text3
        Accessible.ignored: true
    }
    Label {
        anchors.left: number.right
        anchors.leftMargin: 6
        y: Theme.px(24)
        width: ending.x - x - 8
        height: Theme.metaLine
        text: issue.row.unreadable.length > 0 ? issue.row.unreadable : issue.row.meta
        font: Theme.meta
        color: issue.row.unreadable.length > 0 ? Theme.danger : Theme.text3
        Accessible.ignored: true

        HoverTip {
            wanted: issue.row.unreadable.length > 0 && over.hovered
            text: issue.row.unreadable
        }
        HoverHandler { id: over }
    }
    Label {
        id: ending
        anchors.right: parent.right
        anchors.rightMargin: 20
        y: Theme.px(24)
        height: Theme.metaLine
        text: issue.row.ending
        font: Theme.meta
        color: [Theme.text2, Theme.success, Theme.warning, Theme.danger][issue.row.tone]
        Accessible.ignored: true
    }
}
