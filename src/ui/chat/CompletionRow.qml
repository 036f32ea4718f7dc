import QtQuick
import Vesk.Controls

// One candidate: its name with what was typed lit, and where it lies.
Rectangle {
    id: row

    required property string name
    required property string folder
    required property int matchStart
    required property int matchLength
    required property bool isFile
    required property bool highlighted

    signal taken()

    implicitHeight: Theme.px(30)
    radius: Theme.radiusSmall
    color: highlighted ? Theme.selected : hover.hovered ? Theme.hover : "transparent"
    Accessible.role: Accessible.ListItem
    Accessible.name: folder.length > 0 ? name + ", " + folder : name
    Accessible.selected: highlighted
    Accessible.onPressAction: taken()

    HoverHandler {
        id: hover
    }
    TapHandler {
        onTapped: row.taken()
    }
    Icon {
        x: 10
        anchors.verticalCenter: parent.verticalCenter
        visible: row.isFile
        name: "file"
        size: 14
    }
    Row {
        x: row.isFile ? Theme.px(16) + 16 : 10
        width: parent.width - x - (tab.visible ? tab.width + 20 : 10)
        height: parent.height
        clip: true

        Label {
            height: parent.height
            text: row.name.slice(0, row.matchStart)
            font: Theme.code
            Accessible.ignored: true
        }
        Label {
            height: parent.height
            text: row.name.slice(row.matchStart, row.matchStart + row.matchLength)
            font: Theme.code
            color: Theme.accent
            Accessible.ignored: true
        }
        Label {
            height: parent.height
            text: row.name.slice(row.matchStart + row.matchLength)
            font: Theme.code
            Accessible.ignored: true
        }
        Label {
            height: parent.height
            leftPadding: 10
            text: row.folder
            font: Theme.secondary
            color: Theme.text3
            Accessible.ignored: true
        }
    }
    KeyCap {
        id: tab
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        visible: row.highlighted
        keys: "Tab"
    }
}
