import QtQuick
import Vesk.Controls

// The keys that do the same, as "Ctrl K".
Rectangle {
    id: cap

    required property string keys

    implicitWidth: label.implicitWidth + 12
    implicitHeight: Theme.px(18)
    radius: Theme.radiusSmall
    color: "transparent"
    border.color: Theme.line2
    visible: keys.length > 0
    Accessible.ignored: true

    Label {
        id: label
        anchors.centerIn: parent
        text: cap.keys
        font: Theme.meta
        color: Theme.text3
        Accessible.ignored: true
    }
}
