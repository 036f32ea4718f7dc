import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// A chip that does something when it is pressed.
T.AbstractButton {
    id: control

    property string iconName
    property string tone
    property bool outlined: false
    property string tip

    implicitWidth: chip.implicitWidth
    implicitHeight: Math.max(Theme.px(24), chip.implicitHeight)
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: text

    Keys.onReturnPressed: event => pressedEnter(event)
    Keys.onEnterPressed: event => pressedEnter(event)

    function pressedEnter(event: KeyEvent): void {
        // Ctrl+Enter is the form's around it.
        event.accepted = !(event.modifiers & Qt.ControlModifier)
        if (event.accepted)
            control.clicked()
    }

    contentItem: Item {
        Chip {
            id: chip
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
            text: control.text
            iconName: control.iconName
            tone: control.tone
            outlined: control.outlined
            lit: control.hovered
            Accessible.ignored: true

            FocusRing { visible: control.visualFocus }
        }
    }

    HoverTip {
        wanted: control.hovered || control.visualFocus
        text: control.tip
    }
}
