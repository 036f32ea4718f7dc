import QtQuick
import Vesk.Controls

// Holds the one sheet that is open. A sheet's file is not even read before it is needed.
Item {
    id: host

    // Where the sheets' files lie.
    required property url folder

    readonly property bool shown: loader.item !== null

    signal closedByUser()

    function open(name: string, properties: var): void {
        if (!shown)
            loader.setSource(folder + name + ".qml", properties)
    }
    // For what cannot be put off: an open sheet goes, and what was typed there with it.
    function openInPlace(name: string, properties: var): void {
        loader.source = ""
        open(name, properties)
    }

    Loader {
        id: loader
        onLoaded: (item as Dialog).open()
    }
    Connections {
        target: loader.item as Dialog
        function onClosed(): void {
            loader.source = ""
            host.closedByUser()
        }
    }
}
