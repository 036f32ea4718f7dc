import QtQuick
import Vesk.Controls
import Vesk.Shell

// The line between two panes. A double click, or Enter, makes what it divides even.
Splitter {
    id: splitter

    required property Panes panes
    required property int split
    required property bool sideBySide
    required property rect line

    x: line.x
    y: line.y
    width: line.width
    height: line.height
    vertical: sideBySide
    label: sideBySide ? "왼쪽 칸 너비" : "위쪽 칸 높이"
    onMoved: value => panes.resize(split, value)
    Keys.onReturnPressed: panes.even(split)
    Keys.onEnterPressed: panes.even(split)

    TapHandler {
        margin: 4
        onDoubleTapped: splitter.panes.even(splitter.split)
    }
}
