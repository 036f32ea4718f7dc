import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// A thin bar that is there only when there is something to scroll.
T.ScrollBar {
    id: control

    implicitWidth: orientation === Qt.Vertical ? 10 : 40
    implicitHeight: orientation === Qt.Vertical ? 40 : 10
    padding: 2
    minimumSize: 0.05
    visible: size < 1 && policy !== T.ScrollBar.AlwaysOff
    Accessible.ignored: true

    contentItem: Rectangle {
        readonly property bool lit: control.hovered || control.pressed

        radius: Math.min(width, height) / 2
        color: control.pressed ? Theme.text3 : lit ? Theme.lineCtl : Theme.line2
    }
}
