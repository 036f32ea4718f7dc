import QtQuick
import Vesk.Controls

// Holds the one sheet that is open. A sheet's file is not even read before it is needed.
Item {
    id: host

    // Where the sheets' files lie.
    required property url folder

    // One that fades away does not count: the keys are the window's again.
    readonly property bool shown: loader.item !== null && !leaving

    property bool leaving: false

    signal closedByUser()

    function open(name: string, properties: var): void {
        if (shown)
            return
        leaving = false
        loader.setSource(folder + name + ".qml", properties)
    }
    // For what cannot be put off: an open sheet goes, and what was typed there with it.
    function openInPlace(name: string, properties: var): void {
        loader.source = ""
        leaving = false
        open(name, properties)
    }

    Loader {
        id: loader
        onLoaded: (item as Dialog).open()
    }
    Connections {
        target: loader.item as Dialog
        function onAboutToHide(): void { host.leaving = true }
        function onClosed(): void {
            loader.source = ""
            host.closedByUser()
        }
    }
}
