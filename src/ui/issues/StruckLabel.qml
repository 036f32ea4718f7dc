import QtQuick
import Vesk.Controls

// A line of text that may have a line through it.
Label {
    id: label

    property bool struck: false
    property int thickness: 1

    Rectangle {
        visible: label.struck
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(label.contentWidth, label.width)
        height: label.thickness
        color: label.color
    }
}
