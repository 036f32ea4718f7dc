import QtQuick
import Vesk.Controls
import Vesk.Shell

// Takes a tab to the pane on one side.
MenuRow {
    required property TabMenu tabMenu
    required property int side

    iconName: "chevron-right"
    enabled: tabMenu.panes.hasPaneBeside(tabMenu.key, side)
    onTriggered: tabMenu.panes.moveTowards(tabMenu.key, side)
}
