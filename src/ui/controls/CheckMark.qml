import QtQuick
import Vesk.Controls

// The square mark of a choice of several; the row that it stands in is the control.
Rectangle {
    id: mark

    required property bool checked

    implicitWidth: Theme.px(16)
    implicitHeight: Theme.px(16)
    radius: Theme.radiusSmall
    color: !checked ? "transparent" : enabled ? Theme.accentFill : Theme.hover
    border.width: checked ? 0 : 1
    border.color: enabled ? Theme.lineCtl : Theme.line2
    Accessible.ignored: true

    Icon {
        anchors.centerIn: parent
        visible: mark.checked
        name: "check"
        size: 12
        color: mark.enabled ? Theme.onAccent : Theme.textOff
    }
}
