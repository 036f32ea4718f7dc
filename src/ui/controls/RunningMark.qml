import QtQuick
import Vesk.Controls

// The ring that steps on while something runs.
Item {
    id: mark

    // Without it the ring stands still and grey: begun, and nobody works on it any more.
    property bool moving: true

    implicitWidth: Theme.px(16)
    implicitHeight: Theme.px(16)
    Accessible.ignored: true

    Icon {
        anchors.centerIn: parent
        name: "mark-ring"
        color: Theme.gaugeTrack
    }
    Icon {
        anchors.centerIn: parent
        name: "mark-running"
        color: mark.moving ? Theme.accent : Theme.text3
        rotation: mark.moving ? RunningClock.position * 30 : 0
        antialiasing: true
    }
    ClockHold {
        clock: RunningClock
        active: mark.moving
    }
}
