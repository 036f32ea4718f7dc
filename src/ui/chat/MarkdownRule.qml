import QtQuick
import Vesk.Controls

// A line across.
Item {
    readonly property Item textItem: null

    implicitHeight: 9

    Hairline {
        y: 4
        width: parent.width
    }
}
