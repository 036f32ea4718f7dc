import QtQuick

// Adds up what a wheel turns upwards where nothing is left to scroll.
Item {
    id: pull

    required property real needed
    required property bool atTop

    property real turned: 0

    signal pulled()

    WheelHandler {
        target: null
        blocking: false
        acceptedDevices: PointerDevice.TouchPad
        onWheel: event => {
            if (!pull.atTop || event.angleDelta.y <= 0) {
                pull.turned = 0
                return
            }
            const before = pull.turned
            pull.turned += event.pixelDelta.y !== 0 ? event.pixelDelta.y : event.angleDelta.y / 8
            if (before < pull.needed && pull.turned >= pull.needed)
                pull.pulled()
            forget.restart()
        }
    }
    Timer {
        id: forget
        interval: 400
        onTriggered: pull.turned = 0
    }
}
