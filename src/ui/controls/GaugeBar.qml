import QtQuick
import Vesk.Controls

// How much of a limit is used; over 100 percent the bar is full and the number beside it tells the truth.
Rectangle {
    id: gauge

    required property real percent
    property string label
    // The window of the limit has begun anew since the last figure.
    property bool expired: false

    implicitWidth: 56
    implicitHeight: 4
    radius: height / 2
    color: Theme.gaugeTrack
    Accessible.role: Accessible.ProgressBar
    Accessible.name: (label.length > 0 ? label + " " : "") + Math.round(percent) + "%"

    Rectangle {
        readonly property real share: Math.max(0, Math.min(1, gauge.percent / 100))

        // A used limit shows at least a dot.
        width: gauge.percent > 0 ? Math.max(parent.height, Math.round(parent.width * share)) : 0
        height: parent.height
        radius: parent.radius
        color: Theme.gaugeColor(gauge.percent, gauge.expired)
    }
}
