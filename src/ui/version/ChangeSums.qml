import QtQuick
import Vesk.Controls

// How many lines were added and removed.
Row {
    id: sums

    required property string added
    required property string removed

    spacing: 4
    visible: added.length > 0
    Accessible.role: Accessible.StaticText
    Accessible.name: added + "줄 " + removed + "줄"

    Label {
        text: sums.added
        font: Theme.secondary
        color: Theme.success
        Accessible.ignored: true
    }
    Label {
        text: sums.removed
        font: Theme.secondary
        color: Theme.danger
        Accessible.ignored: true
    }
}
