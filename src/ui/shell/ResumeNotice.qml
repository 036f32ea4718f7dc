import QtQuick
import Vesk.Controls
import Vesk.Shell

// What could not be done with a conversation, whole: it may hold a path.
Rectangle {
    id: notice

    required property ResumeView view

    width: parent.width
    implicitHeight: Math.max(Theme.px(36), words.implicitHeight + 16)
    color: Theme.dangerSoft
    Accessible.role: Accessible.AlertMessage
    Accessible.name: words.text

    Icon {
        id: sign
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        name: "warning"
        size: 14
        color: Theme.danger
    }
    Label {
        id: words
        anchors.left: sign.right
        anchors.leftMargin: 8
        anchors.right: close.left
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        text: notice.view.notice
        font: Theme.secondary
        color: Theme.danger
        wrapMode: Text.Wrap
        elide: Text.ElideNone
        Accessible.ignored: true
    }
    IconButton {
        id: close
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        side: 24
        iconSize: 12
        iconName: "close"
        text: "닫기"
        onClicked: notice.view.dismissNotice()
    }
}
