pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// Two to five choices side by side. One tab stop; the arrows choose.
T.Control {
    id: control

    // The words of the choices.
    required property list<string> labels
    // A drawing before each word, where given.
    property list<string> icons
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
                readonly property color ink: !control.enabled ? Theme.textOff : current ? Theme.text : Theme.text2
                readonly property string iconName: control.icons[index] ?? ""
                readonly property real iconSpace: iconName.length > 0 ? Theme.px(14) + 6 : 0

                text: modelData
                width: words.implicitWidth + iconSpace + 20
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

                contentItem: Item {
                    Icon {
                        x: 10
                        anchors.verticalCenter: parent.verticalCenter
                        visible: name.length > 0
                        name: segment.iconName
                        size: 14
                        color: segment.ink
                    }
                    Label {
                        id: words
                        x: 10 + segment.iconSpace
                        height: parent.height
                        text: segment.text
                        font: Theme.secondary
                        color: segment.ink
                        Accessible.ignored: true
                    }
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
