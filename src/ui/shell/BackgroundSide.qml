import QtQuick
import Vesk.Shell

// The place of the background panel at the right of the sessions. Its files are read when it is first shown.
Loader {
    id: side

    required property Workspace workspace
    required property ViewSettings view
    // What it shares with the sessions.
    required property real room

    readonly property bool shown: workspace.backgroundShown
    readonly property real least: 280
    readonly property real most: Math.max(least, room - 340)

    signal hidden()

    function update(): void {
        if (shown && status === Loader.Null)
            setSource(Qt.resolvedUrl("BackgroundRegion.qml"), { side: side })
        if (shown)
            forceActiveFocus(Qt.ShortcutFocusReason)
        else
            hidden()
    }

    visible: shown
    width: shown ? Math.round(Math.max(least, Math.min(view.backgroundWidth, most))) : 0
    onShownChanged: update()
    Component.onCompleted: {
        if (shown)
            update()
    }
}
