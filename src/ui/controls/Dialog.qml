import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// A question or form above a dimmed window; DialogButtons is its footer.
T.Dialog {
    id: control

    readonly property FocusReturn focusReturn: FocusReturn {}

    onAboutToShow: focusReturn.begin(parent)
    onAboutToHide: focusReturn.end()

    modal: true
    focus: true
    anchors.centerIn: T.Overlay.overlay
    margins: 16
    leftPadding: 20
    rightPadding: 20
    topPadding: 8
    bottomPadding: footer ? 0 : 20
    implicitWidth: 440
    implicitHeight: (header ? header.implicitHeight : 0) + contentItem.implicitHeight + topPadding + bottomPadding
        + (footer ? footer.implicitHeight : 0)
    closePolicy: T.Popup.CloseOnEscape
    background: PopupFrame {}

    header: Label {
        leftPadding: 20
        rightPadding: 20
        topPadding: 16
        text: control.title
        font: Theme.section
        visible: text.length > 0
    }

    T.Overlay.modal: Rectangle { color: Theme.scrim }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.popupFade }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.popupFade }
    }
}
