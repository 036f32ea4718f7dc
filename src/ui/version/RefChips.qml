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
    readonly property bool hasHead: names.length > 0 && names[0].kind === RefKind.Head
    // HEAD is short; the others share what the subject leaves.
    readonly property real widest: Math.min(Theme.px(234), (room * 0.7 - (hasHead ? Theme.px(50) : 0))
                                            / Math.max(1, Math.min(most, names.length) - (hasHead ? 1 : 0)))

    spacing: 6

    Repeater {
        model: chips.names.slice(0, chips.most)

        delegate: RefChip {
            required property var modelData

            anchors.verticalCenter: chips.verticalCenter
            name: modelData.name
            kind: modelData.kind
            lane: chips.lane
            widest: modelData.kind === RefKind.Head ? Theme.px(60) : chips.widest
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
