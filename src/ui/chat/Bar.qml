import QtQuick
import Vesk.Controls

// One of the lines of state between the timeline and the composer.
Rectangle {
    id: bar

    property color edge: "transparent"

    color: Theme.panel

    Hairline {
        width: parent.width
    }
    Rectangle {
        width: 3
        height: parent.height
        color: bar.edge
    }
}
