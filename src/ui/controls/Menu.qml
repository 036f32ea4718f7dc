import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// A list of actions; its rows are MenuRow, with MenuLine between groups.
T.Menu {
    id: control

    property int leastWidth: 180
    readonly property real widest: {
        let widest = 0
        for (let i = 0; i < count; ++i)
            widest = Math.max(widest, itemAt(i)?.implicitWidth ?? 0)
        return widest
    }
    readonly property FocusReturn focusReturn: FocusReturn {}

    onAboutToShow: focusReturn.begin(parent)
    onAboutToHide: focusReturn.end()

    padding: 5
    margins: 8
    overlap: 1
    implicitWidth: Math.max(leastWidth, widest + leftPadding + rightPadding)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    delegate: MenuRow {}
    background: PopupFrame {}

    contentItem: ListView {
        implicitHeight: contentHeight
        model: control.contentModel
        currentIndex: control.currentIndex
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        clip: interactive
    }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.popupFade }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.popupFade }
    }
}
