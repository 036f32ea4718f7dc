import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// A frame above the window that closes by Esc or by a press beside it.
T.Popup {
    id: control

    readonly property FocusReturn focusReturn: FocusReturn {}

    onAboutToShow: focusReturn.begin(parent)
    onAboutToHide: focusReturn.end()

    padding: 6
    margins: 8
    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    background: PopupFrame {}

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.popupFade }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.popupFade }
    }
}
