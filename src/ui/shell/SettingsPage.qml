import QtQuick
import Vesk.Controls
import Vesk.Shell

// The open section. Its file is read when it is opened; what the keyboard reaches is scrolled into view.
FocusScope {
    id: page

    required property Settings settings

    readonly property Item focused: Window.activeFocusItem

    function load(): void {
        loader.setSource(Qt.resolvedUrl(settings.sections.fileAt(settings.section)), { settings: settings })
        flick.contentY = 0
    }
    function reveal(): void {
        let above = focused
        while (above && above !== loader)
            above = above.parent
        if (!above)
            return
        const top = focused.mapToItem(loader, 0, 0).y + loader.y
        const wanted = Math.min(top - 24, Math.max(flick.contentY, top + focused.height + 24 - flick.height))
        flick.contentY = Math.max(0, Math.min(wanted, flick.contentHeight - flick.height))
    }

    onFocusedChanged: reveal()
    Component.onCompleted: load()

    Connections {
        target: page.settings
        function onSectionChanged(): void { page.load() }
    }

    Flickable {
        id: flick
        anchors.fill: parent
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentWidth: width
        contentHeight: loader.height + 48
        interactive: contentHeight > height

        Loader {
            id: loader
            x: 24
            y: 24
            width: Math.min(920, flick.width - 48)
        }
    }
    ScrollBar {
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.right: parent.right
        orientation: Qt.Vertical
        size: flick.visibleArea.heightRatio
        position: flick.visibleArea.yPosition
        onPositionChanged: {
            if (pressed)
                flick.contentY = position * flick.contentHeight
        }
    }
}
