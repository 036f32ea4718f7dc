pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls

// So many of so many: a segment for each while they can be told apart, else one bar.
Item {
    id: bar

    required property int done
    required property int failed
    required property int total

    readonly property bool segmented: total <= 10

    implicitWidth: segmented ? Math.max(0, total * (Theme.px(12) + 2) - 2) : Theme.px(80)
    implicitHeight: 4
    Accessible.ignored: true

    Repeater {
        model: bar.segmented ? bar.total : 0

        Rectangle {
            required property int index

            x: index * (Theme.px(12) + 2)
            width: Theme.px(12)
            height: 4
            radius: 2
            color: index < bar.done ? Theme.success : index < bar.done + bar.failed ? Theme.danger : Theme.gaugeTrack
        }
    }
    Rectangle {
        visible: !bar.segmented
        width: parent.width
        height: 4
        radius: 2
        color: Theme.gaugeTrack

        Rectangle {
            id: full
            width: Math.round(parent.width * bar.done / Math.max(1, bar.total))
            height: 4
            radius: 2
            color: Theme.success
        }
        Rectangle {
            anchors.left: full.right
            visible: bar.failed > 0
            width: Math.max(4, Math.round(parent.width * bar.failed / Math.max(1, bar.total)))
            height: 4
            radius: 2
            color: Theme.danger
        }
    }
}
