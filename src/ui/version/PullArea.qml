import QtQuick
import Vesk.Controls
import Vesk.Version

// Over a list that is pulled down at its top: by dragging it, or by a wheel that goes on upwards.
Item {
    id: area

    required property ListView list

    readonly property real needed: 64
    // The list follows what drags it by half.
    readonly property real dragged: 2 * Math.max(0, -list.verticalOvershoot)
    readonly property real pull: Math.max(dragged, wheel.distance)

    signal pulled()

    Connections {
        target: area.list
        function onDragEnded(): void {
            if (area.dragged >= area.needed)
                area.pulled()
        }
    }
    WheelPull {
        id: wheel
        needed: area.needed
        onPulled: area.pulled()
    }
    WheelHandler {
        target: null
        blocking: false
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => {
            wheel.turn(event.pixelDelta.y !== 0 ? event.pixelDelta.y : event.angleDelta.y / 8, area.list.atYBeginning)
            rest.restart()
        }
    }
    Timer {
        id: rest
        interval: wheel.restMs
        onTriggered: wheel.rest()
    }
    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 6
        width: words.width + 24
        height: Theme.px(28)
        visible: area.pull > 8
        radius: Theme.radius
        color: Theme.raised
        border.color: area.pull >= area.needed ? Theme.accent : Theme.line2

        Label {
            id: words
            anchors.centerIn: parent
            text: area.dragged >= area.needed ? "놓으면 원격을 확인합니다" : "당겨서 원격 확인"
            font: Theme.secondary
            color: area.pull >= area.needed ? Theme.accent : Theme.text2
        }
    }
}
