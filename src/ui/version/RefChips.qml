pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Version

// The names of a commit, as many as there is room for, and how many more there are.
Row {
    id: chips

    required property var names
    required property int most
    required property real room
    required property int lane

    readonly property var hidden: names.slice(most)

    spacing: 6

    Repeater {
        model: chips.names.slice(0, chips.most)

        delegate: RefChip {
            required property var modelData

            anchors.verticalCenter: chips.verticalCenter
            name: modelData.name
            kind: modelData.kind
            lane: chips.lane
            widest: Math.min(Theme.px(234), chips.room * 0.7 / Math.min(chips.most, chips.names.length))
        }
    }
    Repeater {
        model: chips.hidden.length > 0 ? 1 : 0

        delegate: RefChip {
            id: rest

            anchors.verticalCenter: chips.verticalCenter
            name: "+" + chips.hidden.length
            kind: RefKind.Tag
            lane: 0

            HoverHandler { id: hover }
            HoverTip {
                control: rest
                wanted: hover.hovered
                text: chips.hidden.map(name => name.name).join(", ")
            }
        }
    }
}
