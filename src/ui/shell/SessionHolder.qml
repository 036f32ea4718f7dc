import QtQuick
import Vesk.Controls
import Vesk.Shell

// The place of one session: that of its pane, below the tabs. Its view is built when it is first shown, and kept from then on: its scroll
// position and its draft stay.
Loader {
    id: holder

    required property string key
    required property string alias
    required property string path
    required property string title
    required property int lane
    required property string colorHex
    required property ProjectChat chat
    required property rect place
    // Its pane shows it.
    required property bool shown
    required property Workspace workspace

    // Set by the view when it is there.
    property Item chatPane: null
    readonly property bool current: key === workspace.currentKey

    signal renameTriggered()
    signal auditLogTriggered()
    signal pointedAt()

    function show(): void {
        if (shown && status === Loader.Null)
            setSource("SessionView.qml", { holder: holder })
    }

    x: place.x
    y: place.y + Theme.px(36)
    width: place.width
    height: Math.max(0, place.height - Theme.px(36))
    clip: workspace.panes.count > 1
    visible: shown
    onShownChanged: show()
    Component.onCompleted: show()
    onActiveFocusChanged: {
        if (activeFocus && !current)
            pointedAt()
    }

    PointHandler {
        onActiveChanged: {
            if (active)
                holder.pointedAt()
        }
    }
}
