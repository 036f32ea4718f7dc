import QtQuick
import Vesk.Controls
import Vesk.Shell

// Whose session it is and where it works.
Rectangle {
    id: header

    required property string alias
    required property string path
    required property int lane
    required property string colorHex
    // Running background tasks, and whether their panel is shown.
    property int backgroundCount: 0
    property bool backgroundShown: false

    signal backgroundTriggered()
    signal renameTriggered()
    signal closeTriggered()

    implicitHeight: Theme.px(32)
    color: Theme.canvas

    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
    }
    ProjectSquare {
        id: square
        x: 16
        anchors.verticalCenter: parent.verticalCenter
        color: header.lane >= 0 ? Theme.lane(header.lane) : header.colorHex
    }
    Label {
        id: name
        anchors.left: square.right
        anchors.leftMargin: 8
        width: Math.min(implicitWidth, (tools.x - x) / 2)
        height: parent.height
        text: header.alias
        font: Theme.uiBold
    }
    Label {
        anchors.left: name.right
        anchors.leftMargin: 8
        anchors.right: tools.left
        anchors.rightMargin: 8
        height: parent.height
        text: header.path
        font: Theme.codeSmall
        color: Theme.text2
        elide: Text.ElideMiddle
        Accessible.name: "폴더 " + header.path
    }
    Row {
        id: tools
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        ChipButton {
            visible: header.backgroundCount > 0
            text: "배경 " + header.backgroundCount
            iconName: "background"
            tone: "info"
            tip: background.text
            onClicked: header.backgroundTriggered()
        }
        IconButton {
            id: background
            side: 24
            checked: header.backgroundShown
            iconName: "background"
            text: header.backgroundShown ? "백그라운드 패널 닫기"
                : "백그라운드 패널 열기 — 이 세션이 돌린 워크플로·하위 에이전트 진행"
            keys: "Ctrl B"
            onClicked: header.backgroundTriggered()
        }
        IconButton {
            id: more
            side: 24
            iconName: "more"
            text: "더 보기"
            onClicked: menu.setSource("HeaderMenu.qml", { header: header, anchor: more })
        }
    }
    Loader { id: menu }
    Connections {
        target: menu.item as Menu
        function onClosed(): void { menu.source = "" }
    }
}
