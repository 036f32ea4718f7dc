import QtQuick
import Vesk.Controls

// The ring around what the keyboard is on; it stands one pixel outside of its parent.
Rectangle {
    // Below zero it stands inside, for rows that reach the edge of a clipped list.
    property real gap: 1
    property real parentRadius: Theme.radius

    anchors.fill: parent
    anchors.margins: -(gap + border.width)
    radius: Math.max(0, parentRadius + gap + border.width)
    color: "transparent"
    border.width: 2
    border.color: Theme.accent
}
