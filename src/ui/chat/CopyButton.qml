import QtQuick
import Vesk.Controls

// A copy button that appears under the pointer, and always for the keyboard.
IconButton {
    property bool shown: false

    side: 24
    iconSize: 14
    iconName: "copy"
    opacity: shown || hovered || visualFocus ? 1 : 0
    focusPolicy: Qt.TabFocus
    ground: hovered || down ? Theme.hover : opacity > 0 ? Theme.raised : "transparent"
}
