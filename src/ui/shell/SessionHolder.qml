import QtQuick
import Vesk.Shell

// The place of one session in a pane. Its view is built when it is first shown, and kept from then on: its scroll
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
    required property Workspace workspace

    // Set by the view when it is there.
    property Item chatPane: null
    readonly property bool current: key === workspace.currentKey

    signal renameTriggered()
    signal auditLogTriggered()

    function show(): void {
        if (current && status === Loader.Null)
            setSource("SessionView.qml", { holder: holder })
    }

    visible: current
    focus: current
    onCurrentChanged: show()
    Component.onCompleted: show()
}
