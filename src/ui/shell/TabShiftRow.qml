import QtQuick
import Vesk.Controls
import Vesk.Shell

// Takes a tab along its own strip; there only if it has somewhere to go.
MenuRow {
    required property Panes panes
    required property string key
    required property int places

    visible: panes.canShift(key, places)
    height: visible ? implicitHeight : 0
    onTriggered: panes.shift(key, places)
}
