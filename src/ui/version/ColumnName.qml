import QtQuick
import Vesk.Controls

// The heading of a column.
Label {
    height: parent.height
    font: Theme.meta
    color: Theme.text3
    Accessible.role: Accessible.ColumnHeader
    Accessible.name: text
}
