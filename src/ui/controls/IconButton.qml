import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// A button with a drawing. Its text is what it is called: the help text and the name for assistive tools.
T.Button {
    id: control

    required property string iconName
    required text
    property string keys
    property real iconSize: 16
    // Filled with the accent: the one main action of its region.
    property bool primary: false
    // What it opened stands beside it.
    property bool opened: false
    // Before the text size is applied; never below 24.
    property real side: 28

    property color ink: !enabled ? Theme.textOff : primary ? Theme.onAccent
        : checked ? Theme.accent : hovered ? Theme.text : Theme.text2
    property color ground: primary ? (!enabled ? Theme.hover : hovered || down ? Theme.accentHover : Theme.accentFill)
        : checked ? Theme.selected : enabled && (hovered || down) ? Theme.hover : "transparent"

    implicitWidth: Theme.px(side)
    implicitHeight: Theme.px(side)
    padding: 0
    focusPolicy: Qt.StrongFocus
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
        Icon {
            anchors.centerIn: parent
            name: control.iconName
            color: control.ink
            size: control.iconSize
        }
    }

    background: Rectangle {
        radius: Theme.radius
        color: control.ground

        FocusRing { visible: control.visualFocus }
    }

    HoverTip {
        wanted: !control.opened && (control.hovered || control.visualFocus)
        text: control.text
        keys: control.keys
    }
}
