import QtQuick
import Vesk.Controls
import Vesk.Issues

// The editor and the disk disagree: in what, and the two ways out of it.
Rectangle {
    id: conflict

    required property IssueDetail detail

    readonly property MarkdownDocumentModel document: detail.document
    readonly property bool locked: document?.locked ?? false
    readonly property color ink: locked ? Theme.danger : Theme.warning

    implicitHeight: Math.max(Theme.px(36), words.implicitHeight + 14)
    radius: Theme.radius
    color: locked ? Theme.dangerSoft : Theme.warningSoft
    border.color: ink
    Accessible.role: Accessible.AlertMessage
    Accessible.name: label.text + ". " + words.text

    Icon {
        id: sign
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        name: conflict.locked ? "lock" : "warning"
        size: 14
        color: conflict.ink
    }
    Label {
        id: label
        anchors.left: sign.right
        anchors.leftMargin: 8
        height: parent.height
        text: conflict.document?.conflictLabel ?? ""
        font: Theme.secondaryBold
        color: conflict.ink
        Accessible.ignored: true
    }
    Label {
        id: words
        anchors.left: label.right
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        width: actions.x - x - 12
        text: conflict.document?.conflictBadge ?? ""
        font: Theme.secondary
        color: Theme.text2
        lineHeight: Theme.secondaryLine
        lineHeightMode: Text.FixedHeight
        wrapMode: Text.Wrap
        elide: Text.ElideNone
        Accessible.ignored: true
    }
    Row {
        id: actions
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        VButton {
            implicitHeight: Theme.px(24)
            text: "저장"
            enabled: conflict.document?.canSave ?? false
            tip: conflict.document?.saveHelp ?? ""
            onClicked: conflict.detail.saveNow()
        }
        VButton {
            implicitHeight: Theme.px(24)
            text: "다시 읽기"
            enabled: conflict.document?.canReload ?? false
            tip: conflict.document?.reloadHelp ?? ""
            onClicked: conflict.detail.readAgain()
        }
    }
}
