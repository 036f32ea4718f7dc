import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// A line to type into.
T.TextField {
    id: control

    // With the magnifier in front and a cross behind.
    property bool search: false
    property bool invalid: false
    property color ground: Theme.raised
    // Shown at the end while nothing is typed.
    property string keys
    // True while a syllable is being put together: Enter, Tab, arrows and Esc then belong to the input method.
    readonly property bool composing: inputMethodComposing || preeditText.length > 0

    // Enter, but never the one that ends a syllable.
    signal submitted()

    implicitWidth: 200
    implicitHeight: Theme.px(28)
    leftPadding: search ? Theme.px(16) + 16 : 8
    rightPadding: trailing.width > 0 ? trailing.width + 8 : 8
    topPadding: 0
    bottomPadding: 0
    verticalAlignment: TextInput.AlignVCenter
    font: Theme.ui
    color: enabled ? Theme.text : Theme.textOff
    selectionColor: Theme.selected
    selectedTextColor: Theme.text
    placeholderTextColor: Theme.text3
    selectByMouse: true
    clip: true
    Accessible.name: placeholderText
    Accessible.searchEdit: search

    onAccepted: {
        if (!composing)
            submitted()
    }
    CompositionGuard {
        editor: control
    }

    Icon {
        x: 9
        anchors.verticalCenter: parent.verticalCenter
        visible: control.search
        name: "search"
        size: 14
        color: Theme.text3
    }
    Label {
        x: control.leftPadding
        width: control.width - control.leftPadding - control.rightPadding
        height: control.height
        visible: control.text.length === 0 && !control.composing
        text: control.placeholderText
        font: control.font
        color: control.placeholderTextColor
        Accessible.ignored: true
    }
    Item {
        id: trailing

        readonly property bool clears: control.search && control.text.length > 0

        anchors.right: parent.right
        anchors.rightMargin: clears ? 2 : 5
        height: parent.height
        width: clears ? clearButton.width : cap.visible ? cap.width : 0

        KeyCap {
            id: cap
            anchors.verticalCenter: parent.verticalCenter
            keys: trailing.clears || control.text.length > 0 ? "" : control.keys
        }
        IconButton {
            id: clearButton
            anchors.verticalCenter: parent.verticalCenter
            visible: trailing.clears
            side: 24
            iconName: "close"
            iconSize: 12
            text: "지우기"
            focusPolicy: Qt.NoFocus
            onClicked: control.clear()
        }
    }

    background: Rectangle {
        radius: Theme.radius
        color: control.ground
        border.width: control.activeFocus ? 2 : 1
        border.color: control.invalid ? Theme.danger : control.activeFocus ? Theme.accent
            : control.enabled ? Theme.lineCtl : Theme.line2
    }
}
