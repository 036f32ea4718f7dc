import QtQuick
import Vesk.Controls
import Vesk.Shell

// Takes a tab to the pane on one side; there only if that is.
MenuRow {
    required property Panes panes
    required property string key
    required property int side

    visible: panes.hasPaneBeside(key, side)
    height: visible ? implicitHeight : 0
    onTriggered: panes.moveTowards(key, side)
}
