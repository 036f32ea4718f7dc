pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Shell

// The lines between the panes.
Item {
    id: splitters

    required property Panes panes

    Repeater {
        model: splitters.panes.splits
        delegate: PaneSplitter {
            panes: splitters.panes
        }
    }
}
