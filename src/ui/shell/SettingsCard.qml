import QtQuick
import Vesk.Controls

// A group of settings: rows between hairlines.
Rectangle {
    id: card

    default property alias rows: column.data
    property string title

    width: parent ? (parent as Item).width : 0
    implicitHeight: column.height + 2
    radius: Theme.radius
    color: Theme.raised
    border.color: Theme.line2
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Column {
        id: column
        x: 1
        y: 1
        width: card.width - 2
    }
}
