import QtQuick
import Vesk.Controls

// The round mark of a choice of one; the row that it stands in is the control.
Rectangle {
    id: mark

    required property bool checked

    implicitWidth: Theme.px(16)
    implicitHeight: Theme.px(16)
    radius: width / 2
    color: "transparent"
    border.width: checked ? 1.5 : 1
    border.color: !enabled ? Theme.line2 : checked ? Theme.accent : Theme.lineCtl
    Accessible.ignored: true

    Rectangle {
        anchors.centerIn: parent
        visible: mark.checked
        width: Theme.px(8)
        height: width
        radius: width / 2
        color: mark.enabled ? Theme.accent : Theme.textOff
    }
}
