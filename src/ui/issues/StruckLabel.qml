import QtQuick
import Vesk.Controls

// A line of text that may have a line through it.
Label {
    id: label

    property bool struck: false
    property real thickness: 1
    property real strength: 1

    Rectangle {
        visible: label.struck
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(label.contentWidth, label.width)
        height: 1
        color: label.color
        opacity: label.strength
        // Of its own height the software renderer takes whole points only.
        transform: Scale { yScale: label.thickness }
    }
}
