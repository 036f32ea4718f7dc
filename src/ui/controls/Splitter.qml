import QtQuick
import Vesk.Controls

// The movable line between two regions: one pixel to see, eight to catch. The owner sets `value` in moved().
Item {
    id: splitter

    // The extent of the region that it sizes, and its limits.
    required property real value
    required property real from
    required property real to
    // The region lies to the right of the line, or below it.
    property bool after: false
    // A line between left and right; else between above and below.
    property bool vertical: true
    property string label: "크기 조절"

    readonly property int keyStep: 16

    signal moved(real value)

    function moveTo(wanted: real): void {
        const bounded = Math.round(Math.max(from, Math.min(to, wanted)))
        if (bounded !== value)
            moved(bounded)
    }

    implicitWidth: vertical ? 1 : 0
    implicitHeight: vertical ? 0 : 1
    z: 1
    activeFocusOnTab: true
    Accessible.role: Accessible.Splitter
    Accessible.name: label
    Accessible.focusable: true

    Keys.onPressed: event => {
        const grow = vertical ? Qt.Key_Right : Qt.Key_Down
        const shrink = vertical ? Qt.Key_Left : Qt.Key_Up
        if (event.key !== grow && event.key !== shrink)
            return
        event.accepted = true
        moveTo(value + ((event.key === grow) !== after ? keyStep : -keyStep))
    }

    Rectangle {
        anchors.centerIn: parent
        width: splitter.vertical ? (lit ? 2 : 1) : parent.width
        height: splitter.vertical ? parent.height : (lit ? 2 : 1)
        color: lit ? Theme.accent : Theme.line

        readonly property bool lit: drag.active || splitter.activeFocus
    }
    Item {
        anchors.centerIn: parent
        width: splitter.vertical ? 8 : parent.width
        height: splitter.vertical ? parent.height : 8

        HoverHandler { cursorShape: splitter.vertical ? Qt.SplitHCursor : Qt.SplitVCursor }
        DragHandler {
            id: drag

            property real start: 0

            target: null
            dragThreshold: 1
            grabPermissions: PointerHandler.CanTakeOverFromAnything
            cursorShape: splitter.vertical ? Qt.SplitHCursor : Qt.SplitVCursor
            onActiveChanged: {
                if (active)
                    start = splitter.value
            }
            onTranslationChanged: {
                const way = splitter.vertical ? translation.x : translation.y
                if (active)
                    splitter.moveTo(start + (splitter.after ? -way : way))
            }
        }
    }
}
