import QtQuick
import Vesk.Controls

// The card on its way to another column.
Rectangle {
    id: ghost

    required property string title

    width: Math.min(260, words.implicitWidth + 24)
    height: Theme.px(28)
    radius: Theme.radius
    color: Theme.raised
    border.color: Theme.accent

    Label {
        id: words
        anchors.fill: parent
        anchors.leftMargin: 12
        anchors.rightMargin: 12
        text: ghost.title
    }
}
