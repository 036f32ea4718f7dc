pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls

// One bar for each quote around a block.
Item {
    id: bars

    required property int count

    Repeater {
        model: bars.count

        Rectangle {
            required property int index
            x: index * 12
            width: 2
            height: bars.height
            color: Theme.line2
        }
    }
}
