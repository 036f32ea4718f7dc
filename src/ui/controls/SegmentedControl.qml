pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// Two to five choices side by side. One tab stop; the arrows choose.
T.Control {
    id: control

    // The words of the choices.
    required property list<string> labels
    property int currentIndex: 0
    property string label

    // The user's choice; the owner sets currentIndex.
    signal activated(int index)

    function choose(index: int): void {
        if (index !== currentIndex && index >= 0 && index < labels.length)
            activated(index)
    }

    implicitWidth: row.implicitWidth + 4
    implicitHeight: Theme.px(28)
    padding: 2
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.PageTabList
    Accessible.name: label

    Keys.onLeftPressed: choose(currentIndex - 1)
    Keys.onRightPressed: choose(currentIndex + 1)
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End
        if (event.accepted)
            choose(event.key === Qt.Key_Home ? 0 : labels.length - 1)
    }

    contentItem: Row {
        id: row

        Repeater {
            model: control.labels

            delegate: T.AbstractButton {
                id: segment

                required property int index
                required property string modelData

                readonly property bool current: index === control.currentIndex

                text: modelData
                width: words.implicitWidth + 20
                height: row.height
                enabled: control.enabled
                focusPolicy: Qt.NoFocus
                Accessible.role: Accessible.PageTab
                Accessible.name: text
                Accessible.selected: current
                onClicked: {
                    control.forceActiveFocus(Qt.MouseFocusReason)
                    control.choose(index)
                }

                contentItem: Label {
                    id: words
                    text: segment.text
                    font: Theme.secondary
                    horizontalAlignment: Text.AlignHCenter
                    color: !control.enabled ? Theme.textOff : segment.current ? Theme.text : Theme.text2
                    Accessible.ignored: true
                }
                background: Rectangle {
                    radius: Theme.radiusSmall
                    color: segment.current ? Theme.selected : segment.hovered ? Theme.hover : "transparent"
                }
            }
        }
    }

    background: Rectangle {
        radius: Theme.radius
        color: "transparent"
        border.color: Theme.line2

        FocusRing { visible: control.visualFocus }
    }
}
