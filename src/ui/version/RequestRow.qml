import QtQuick
import Vesk.Controls
import Vesk.Version

// A request in a menu, dead while there is nothing to ask for; then it says why.
MenuRow {
    required property VersionView view
    required property int kind
    property bool shown: true

    visible: shown
    height: shown ? implicitHeight : 0
    description: view.requestReason(kind)
    enabled: description.length === 0
}
