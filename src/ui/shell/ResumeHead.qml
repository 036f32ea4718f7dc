pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// What the panel shows and of which project, with the choice of another.
Item {
    id: head

    required property ResumeView view

    signal closeTriggered()

    height: Theme.px(48)

    Label {
        id: title
        x: 12
        height: parent.height
        text: "지난 대화"
        font: Theme.section
    }
    VButton {
        id: project
        anchors.left: title.right
        anchors.leftMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, refresh.x - x - 4)
        kind: VButton.Quiet
        visible: head.view.aliases.length > 0
        text: head.view.alias
        iconName: "folder"
        rightPadding: Theme.px(12) + 14
        tip: "다른 프로젝트의 대화 보기"
        Accessible.role: Accessible.ButtonMenu
        Accessible.name: "프로젝트 " + head.view.alias
        onClicked: menu.setSource("ResumeProjectMenu.qml", { parent: project, view: head.view, visible: true })

        Icon {
            anchors.right: parent.right
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            name: "chevron-down"
            size: 12
            color: Theme.text3
        }
    }
    IconButton {
        id: refresh
        anchors.right: close.left
        anchors.verticalCenter: parent.verticalCenter
        iconName: "refresh"
        text: "다시 읽기"
        onClicked: head.view.refresh()
    }
    IconButton {
        id: close
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        iconName: "close"
        iconSize: 14
        text: "닫기"
        keys: "Esc"
        onClicked: head.closeTriggered()
    }

    Loader { id: menu }
    Connections {
        target: menu.item as Menu
        function onClosed(): void {
            menu.source = ""
            project.forceActiveFocus()
        }
    }
}
