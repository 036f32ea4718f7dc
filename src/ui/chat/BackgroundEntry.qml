import QtQuick
import Vesk.Controls
import Vesk.Chat

// A row of the background panel; what it looks like is its kind's own file.
Item {
    id: entry

    required property int index
    required property int kind
    required property string workState
    required property string title
    required property string detail
    required property string chip
    required property bool isCode
    required property bool isRestored
    required property bool canOpen
    required property bool isOpen
    required property bool isLast
    required property bool isFirst
    required property date since
    required property string time
    required property string tokens
    required property string calls
    required property int done
    required property int failed
    required property int total
    required property string accessibleText
    property bool ringed: false

    readonly property alias hovered: hover.hovered

    signal activated()

    width: ListView.view.width
    height: drawing.item ? (drawing.item as Item).implicitHeight : 0
    Accessible.role: Accessible.TreeItem
    Accessible.name: accessibleText
    Accessible.selected: ringed
    Accessible.onPressAction: activated()

    HoverHandler {
        id: hover
    }
    TapHandler {
        onTapped: entry.activated()
    }
    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: 6
        anchors.rightMargin: 6
        anchors.topMargin: entry.kind === BackgroundModel.Task && !entry.isFirst ? 9 : 0
        radius: Theme.radius
        color: hover.hovered && (entry.canOpen || entry.kind === BackgroundModel.Output) ? Theme.hover : "transparent"

        FocusRing {
            visible: entry.ringed
            gap: -2
        }
    }
    Loader {
        id: drawing
        width: parent.width
        Component.onCompleted: {
            const files = ["Task", "Phase", "Agent", "Line", "Lines", "Output", "Summary"]
            setSource(Qt.resolvedUrl("Background" + files[entry.kind] + "Row.qml"), { entry: entry })
        }
    }
}
