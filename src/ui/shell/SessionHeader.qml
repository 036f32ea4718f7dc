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
        width: Math.min(implicitWidth, (more.x - x) / 2)
        height: parent.height
        text: header.alias
        font: Theme.uiBold
    }
    Label {
        anchors.left: name.right
        anchors.leftMargin: 8
        anchors.right: more.left
        anchors.rightMargin: 8
        height: parent.height
        text: header.path
        font: Theme.codeSmall
        color: Theme.text2
        elide: Text.ElideMiddle
        Accessible.name: "폴더 " + header.path
    }
    IconButton {
        id: more
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        side: 24
        iconName: "more"
        text: "더 보기"
        onClicked: menu.setSource("HeaderMenu.qml", { header: header, anchor: more })
    }
    Loader { id: menu }
    Connections {
        target: menu.item as Menu
        function onClosed(): void { menu.source = "" }
    }
}
