import QtQuick
import Vesk.Controls
import Vesk.Shell

// Takes a tab to the pane on one side.
MenuRow {
    id: row

    required property Panes panes
    required property string key
    required property int side

    iconName: "open-external"
    enabled: panes.hasPaneBeside(key, side)
    onTriggered: panes.moveTowards(key, side)
}
