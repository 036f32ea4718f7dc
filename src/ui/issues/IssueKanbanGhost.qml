import QtQuick
import Vesk.Controls

// The card on its way: its name at the pointer.
Rectangle {
    id: ghost

    required property string text
    required property point at

    x: Math.min(at.x + 12, parent.width - width)
    y: Math.min(at.y + 12, parent.height - height)
    width: Math.min(260, name.implicitWidth + 24)
    height: Theme.px(28)
    visible: text.length > 0
    radius: Theme.radius
    color: Theme.raised
    border.color: Theme.accent

    Label {
        id: name
        anchors.fill: parent
        anchors.leftMargin: 12
        anchors.rightMargin: 12
        text: ghost.text
    }
}
