import QtQuick
import Vesk.Controls
import Vesk.Shell

// The place of the panel of past conversations, whose file is read when it is first opened.
Item {
    id: holder

    required property ResumeView view

    // Not by its type: naming that here would load it before the first frame.
    readonly property var item: loader.item
    // Where the keys were when a question about a conversation came up.
    property bool asked: false

    signal resumed(string key)
    signal deleteRequested(string key, string title)
    signal closed()

    function open(): void {
        if (!item)
            loader.setSource(Qt.resolvedUrl("ResumePanel.qml"), { view: view })
        item?.focusField()
    }
    function close(): void {
        loader.source = ""
        view.hide()
        closed()
    }
    function takeFocusBack(): bool {
        const takes = asked && item !== null
        asked = false
        if (takes)
            item.focusList()
        return takes
    }

    // In a small window the session keeps the larger part.
    width: item ? Math.min(Theme.px(404), Math.round(parent.width * 0.36)) : 0

    Loader {
        id: loader
        anchors.fill: parent
    }
    Connections {
        target: loader.item
        ignoreUnknownSignals: true
        function onCloseRequested(): void { holder.close() }
    }
    Connections {
        target: holder.view
        function onResumed(sessionKey: string): void { holder.resumed(sessionKey) }
        function onDeleteConfirmationNeeded(key: string, title: string): void {
            holder.asked = true
            holder.deleteRequested(key, title)
        }
    }
}
