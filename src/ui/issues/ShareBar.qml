import QtQuick
import Vesk.Controls

// How much of something is done.
Rectangle {
    id: bar

    // 0 to 1.
    required property real share

    implicitWidth: 40
    implicitHeight: 4
    radius: 2
    color: Theme.gaugeTrack

    Rectangle {
        width: bar.share > 0 ? Math.max(parent.height, Math.round(parent.width * Math.min(1, bar.share))) : 0
        height: parent.height
        radius: parent.radius
        color: Theme.success
    }
}
