import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// On or off, at once. Its text is its name for assistive tools; the words stand in the row beside it.
T.Switch {
    id: control

    implicitWidth: indicator.width
    implicitHeight: Math.max(Theme.px(28), indicator.height)
    padding: 0
    focusPolicy: Qt.StrongFocus
    Accessible.name: text

    indicator: Rectangle {
        y: Math.round((control.height - height) / 2)
        width: Theme.px(30)
        height: Theme.px(18)
        radius: height / 2
        color: !control.enabled ? Theme.hover : control.checked ? Theme.accentFill : Theme.gaugeTrack
        border.width: control.checked ? 0 : 1
        border.color: control.enabled ? Theme.lineCtl : Theme.line2

        Rectangle {
            readonly property int gap: 2

            x: control.checked ? parent.width - width - gap : gap
            anchors.verticalCenter: parent.verticalCenter
            width: parent.height - 2 * gap
            height: width
            radius: width / 2
            color: !control.enabled ? Theme.textOff : control.checked ? Theme.onAccent : Theme.text2
        }
        FocusRing {
            visible: control.visualFocus
            parentRadius: parent.radius
        }
    }
}
