import QtQuick
import Vesk.Controls
import Vesk.Shell

// A tab on its way: its name at the pointer, and the place where it would go.
Item {
    id: layer

    required property TabDrag drag

    Rectangle {
        readonly property rect mark: layer.drag.mark
        readonly property bool isLine: mark.width <= 2

        x: mark.x
        y: mark.y
        width: mark.width
        height: mark.height
        visible: mark.width > 0
        color: isLine ? Theme.accent : Theme.accentSoft
        opacity: isLine ? 1 : 0.8
        border.width: isLine ? 0 : 2
        border.color: Theme.accent
    }
    Rectangle {
        x: Math.min(layer.drag.point.x + 12, layer.width - width)
        y: Math.min(layer.drag.point.y + 12, layer.height - height)
        width: Math.min(220, name.implicitWidth + 24)
        height: Theme.px(28)
        radius: Theme.radius
        color: Theme.raised
        border.color: Theme.line2

        Label {
            id: name
            anchors.fill: parent
            anchors.leftMargin: 12
            anchors.rightMargin: 12
            text: layer.drag.title
        }
    }
    Shortcut {
        sequences: ["Escape"]
        enabled: layer.drag.active
        onActivated: layer.drag.cancel()
    }
}
