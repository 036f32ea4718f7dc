import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// One action or choice of a menu; a description stands below it in a second line.
T.MenuItem {
    id: control

    property string iconName
    property string description
    property string keys
    property bool destructive: false
    // The colour of the icon and, above a description, of the name.
    property color tint: destructive ? Theme.danger : description.length > 0 ? Theme.text : Theme.text2

    readonly property color ink: !enabled ? Theme.textOff : destructive ? Theme.danger
        : description.length > 0 ? tint : Theme.text
    readonly property real iconSpace: iconName.length > 0 ? Theme.px(16) + 10 : 0
    readonly property real endSpace: ending.width > 0 ? ending.width + 16 : 0

    implicitWidth: Math.min(400, Math.max(name.implicitWidth, about.visible ? about.implicitWidth : 0)
                            + iconSpace + endSpace + leftPadding + rightPadding)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    leftPadding: 10
    rightPadding: 10
    topPadding: description.length > 0 ? 6 : 0
    bottomPadding: topPadding
    Accessible.description: description

    contentItem: Item {
        implicitHeight: column.implicitHeight

        Icon {
            y: Math.round((name.height - height) / 2)
            visible: control.iconName.length > 0
            name: control.iconName
            color: control.enabled ? control.tint : Theme.textOff
        }
        Column {
            id: column
            x: control.iconSpace
            width: parent.width - control.iconSpace - control.endSpace

            Label {
                id: name
                width: parent.width
                height: control.description.length > 0 ? Theme.uiLine : Theme.px(28)
                text: control.text
                font: control.description.length > 0 ? Theme.uiBold : Theme.ui
                color: control.ink
                Accessible.ignored: true
            }
            Label {
                id: about
                width: parent.width
                visible: control.description.length > 0
                text: control.description
                font: Theme.secondary
                color: Theme.text2
                lineHeight: Theme.secondaryLine
                lineHeightMode: Text.FixedHeight
                wrapMode: Text.Wrap
                elide: Text.ElideNone
                Accessible.ignored: true
            }
        }
        Row {
            id: ending
            anchors.right: parent.right
            height: name.height
            spacing: 8

            Label {
                anchors.verticalCenter: parent.verticalCenter
                visible: control.keys.length > 0
                text: control.keys
                font: Theme.meta
                color: Theme.text3
                Accessible.ignored: true
            }
            Icon {
                anchors.verticalCenter: parent.verticalCenter
                visible: control.checkable && control.checked || control.subMenu !== null
                name: control.subMenu !== null ? "chevron-right" : "check"
                color: control.subMenu !== null ? Theme.text3 : Theme.accent
            }
        }
    }

    background: Rectangle {
        radius: Theme.radiusSmall
        color: control.highlighted || control.hovered ? Theme.selected : "transparent"
    }
}
